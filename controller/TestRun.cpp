#include "controller/TestRun.h"

#include "ui_Korvan.h"

#include <QHeaderView>

TestRun::TestRun(QWidget *window, Ui::Korvan *form) : m_window(window), m_form(form)
{
    showRunning(true);
}

TestRun::~TestRun()
{
    if (!m_window.isNull()) {
        showRunning(false);
    }
}

void TestRun::showRunning(bool running)
{
    m_form->pbPingAll->setEnabled(!running);
    m_form->pbPingDet->setEnabled(!running);
    m_form->pbSpeedTest->setEnabled(!running);
    m_form->pbTestCancel->setEnabled(running);
    // A click on the header would take effect at the end of the test.
    m_form->tbPing->horizontalHeader()->setSectionsClickable(!running);
    m_form->tbPing->setSortingEnabled(!running);
}

void setServerCell(const QPersistentModelIndex &server, ServerColumn column, const QString &text)
{
    if (server.isValid()) {
        auto *model = const_cast<QAbstractItemModel *>(server.model());
        model->setData(server.sibling(server.row(), column), text);
    }
}
