#include "diag/TestRun.h"

#include "ui_Korvan.h"

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
    m_form->tbPing->setSortingEnabled(!running);
}

void setServerCell(const QPersistentModelIndex &server, ServerColumn column, const QString &text)
{
    if (server.isValid()) {
        auto *model = const_cast<QAbstractItemModel *>(server.model());
        model->setData(server.sibling(server.row(), column), text);
    }
}
