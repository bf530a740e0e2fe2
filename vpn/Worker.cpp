#include "vpn/Worker.h"

#include "vpn/HelperOutput.h"
#include "vpn/HelperStart.h"
#include "vpn/VPNTables.h"

#include <QElapsedTimer>

/// How long a killed helper may take to be gone, in milliseconds.
static constexpr int kKillLimitMs = 1000;

Worker::Worker(VPNClient &client, HelperProcess &helper, const VPNClient::OPTION &option)
    : m_client(client), m_helper(helper), m_option(option)
{}

VPNClient::STATE Worker::state() const
{
    return m_client.state();
}

bool Worker::isInterrupted() const
{
    return m_client.isInterruptionRequested();
}

bool Worker::isStopping() const
{
    return state() == VPNClient::DISCONNECTING || isInterrupted();
}

void Worker::report(const QString &text)
{
    emit m_client.message(text);
}

void Worker::fail(const QString &text)
{
    if (state() != VPNClient::DISCONNECTING) {
        report(QLatin1String(kErrorPrefix) + text);
        moveTo(VPNClient::VPNERROR);
    }
}

void Worker::moveTo(VPNClient::STATE s)
{
    m_client.setStateUnlessClosing(s);
}

bool Worker::start(HelperProcess &helper, const QStringList &arguments)
{
    startHelper(helper, VPNCOMPOSE[m_option.type], arguments);
    QElapsedTimer waited;
    waited.start();
    while (helper.state() == QProcess::Starting && waited.elapsed() < kHelperLimitMs && !isInterrupted()) {
        helper.waitForStarted(kPollMs);
    }
    return helper.state() == QProcess::Running;
}

bool Worker::waitForEnd(HelperProcess &helper, int limitMs)
{
    QElapsedTimer waited;
    waited.start();
    while (helper.state() != QProcess::NotRunning && waited.elapsed() < limitMs && !isInterrupted()) {
        helper.waitForFinished(kPollMs);
    }
    return helper.state() == QProcess::NotRunning;
}

void Worker::killHelper()
{
    m_helper.kill();
    waitForEnd(m_helper, kKillLimitMs);
}

QString Worker::readChunk(QIODevice &device)
{
    QString chunk = outputMessage(device.readAll());
    report(chunk);
    return chunk;
}
