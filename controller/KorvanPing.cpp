#include "controller/Korvan.h"

#include "account/ServerLists.h"
#include "common/Wait.h"
#include "controller/TestRun.h"
#include "diag/Ping.h"
#include "platform/Tool.h"
#include "ui_Korvan.h"

#include <QMessageBox>

int Korvan::getPingByHostName(QString host, int count, double &loss)
{
    const QPointer<Korvan> self(this);
    Wait wait;
    wait.until(&m_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished));
    wait.until(this, &Korvan::testCancel);
    m_process.setProcessEnvironment(childEnvironment());
    m_process.start(QStringLiteral("ping"), {QStringLiteral("-c%1").arg(count), host});
    if (!m_process.waitForStarted(kToolLimitMs)) {
        return -1;
    }
    const bool programQuits = !wait.run();
    if (self.isNull()) {
        return -1;
    }
    const QByteArray output = m_process.readAllStandardOutput();
    m_process.kill();
    m_process.waitForFinished(kToolLimitMs);
    if (output.isEmpty() || programQuits) {
        return -1;
    }
    const PingSummary summary = parsePing(output);
    loss = summary.loss;
    return summary.averageMs;
}

bool Korvan::testsAreRefused()
{
    if (tunnelInUse(m_status)) {
        QMessageBox::information(this, tr("Notify"), tr("Please disconnect first."));
        return true;
    }
    return false;
}

QPersistentModelIndex Korvan::serverToTest()
{
    if (testsAreRefused()) {
        return {};
    }
    const QModelIndex current = m_form->tbPing->currentIndex();
    if (!current.isValid()) {
        QMessageBox::critical(this, tr("Error"), tr("Please select one server."));
    }
    return current.siblingAtColumn(kNameColumn);
}

void Korvan::onPingAll()
{
    if (testsAreRefused()) {
        return;
    }
    const QPointer<Korvan> self(this);
    const TestRun run(this, m_form);
    bool canceled = false;
    const QObject receiver;
    connect(this, &Korvan::testCancel, &receiver, [&canceled] { canceled = true; });
    const QAbstractItemModel *model = m_form->tbPing->model();
    QVector<QPersistentModelIndex> servers;
    for (int row = 0; row < model->rowCount(); ++row) {
        servers.append(model->index(row, kNameColumn));
        setServerCell(servers.last(), kPingColumn, QString());
        setServerCell(servers.last(), kLossColumn, QString());
    }
    for (const QPersistentModelIndex &server : qAsConst(servers)) {
        if (!server.isValid()) {
            return; // the list was rebuilt meanwhile
        }
        setServerCell(server, kPingColumn, tr("Ping..."));
        double loss = 0;
        const int average = getPingByHostName(GetHostFromOvpn(server.data().toString()), 1, loss);
        if (self.isNull()) {
            return;
        }
        // A connection may have been started in the wait, and no ping must go through its tunnel.
        if (average < 0 || canceled || tunnelInUse(m_status)) {
            setServerCell(server, kPingColumn, tr("Canceled"));
            return;
        }
        setServerCell(server, kPingColumn, pingCell(average));
    }
}

void Korvan::onPingDet()
{
    const QPersistentModelIndex server = serverToTest();
    if (!server.isValid()) {
        return;
    }
    const TestRun run(this, m_form);
    setServerCell(server, kPingColumn, tr("Ping..."));
    double loss = 0;
    const int average = getPingByHostName(GetHostFromOvpn(server.data().toString()), 20, loss);
    setServerCell(server, kPingColumn, pingCell(average));
    setServerCell(server, kLossColumn, lossCell(loss));
}

void Korvan::onPingHeader(int column)
{
    static int clicks[kSpeedColumn + 1] = {};
    if (column < 0 || column > kSpeedColumn || m_form->pbTestCancel->isEnabled()) {
        return;
    }
    m_form->tbPing->setSortingEnabled(true);
    m_form->tbPing->sortItems(column, clicks[column] % 2 == 0 ? Qt::DescendingOrder : Qt::AscendingOrder);
    ++clicks[column];
}
