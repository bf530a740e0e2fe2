#include "vpn/VPNClient.h"

#include "common/Text.h"
#include "platform/Tool.h"
#include "vpn/HelperArguments.h"
#include "vpn/HelperOutput.h"
#include "vpn/WorkerLimits.h"

/// The status command runs every so many steps of 50 ms: about every 10 s.
static constexpr int kStepsPerStatus = 200;

void VPNClient::runService()
{
    if (!startHelper(*m_process, serviceConnectArguments(m_option))) {
        fail(tr("start vpn helper process failed."));
        return;
    }
    if (!dialService()) {
        if (state() == DISCONNECTING) {
            cancelService();
        }
        return;
    }
    readChunk(*m_process);
    if (state() == CONNECTING) {
        fail(tr("vpn connect error, please check log"));
        return;
    }
    monitorService();
    if (state() == DISCONNECTING && !isInterruptionRequested()) {
        disconnectService();
    }
}

/// Follows the dialling helper. True when it has ended; false when it failed or is to be stopped before its end.
bool VPNClient::dialService()
{
    while (!isStopping()) {
        if (m_process->state() != QProcess::Running) {
            return true;
        }
        if (!m_process->waitForReadyRead(kPollMs)) {
            continue;
        }
        if (isStopping()) {
            return false;
        }
        const QString chunk = readChunk(*m_process);
        const ServiceOutput outcome = classifyService(chunk);
        if (outcome == ServiceOutput::Success) {
            moveTo(CONNECTED);
        } else if (outcome == ServiceOutput::Error) {
            fail(chunk);
            return false;
        }
    }
    return false;
}

/// Watches the network service, at once and then about every 10 s, until it is gone or the client disconnects.
void VPNClient::monitorService()
{
    for (int step = 0; !isStopping(); step = (step + 1) % kStepsPerStatus) {
        if (step != 0) {
            msleep(kPollMs);
        } else if (!checkService()) {
            return;
        }
    }
}

/// Runs the status command and stores its byte counts. False when the service is no longer up.
bool VPNClient::checkService()
{
    if (!startHelper(*m_process, serviceStatusArguments(m_option.type))) {
        fail(tr("start vpn helper process failed."));
        return false;
    }
    while (m_process->state() != QProcess::NotRunning && !isStopping()) {
        m_process->waitForFinished(kPollMs);
    }
    if (m_process->state() != QProcess::NotRunning) {
        killHelper(); // hanging up comes first
        return false;
    }
    const QByteArray output = m_process->readAll();
    ByteCount count = parseServiceCounts(output);
    byteCount(count.received, count.sent); // stores, unless both are 0
    if (output.contains("Success")) {
        return true;
    }
    emit message(latin1UpToNul(output));
    if (state() == CONNECTED) {
        fail(tr("unexpected vpn disconnected."));
    }
    return false;
}

/// Stops the dialling: hangs up with a second helper, which makes the first one end.
void VPNClient::cancelService()
{
    QProcess stop;
    stop.setProcessChannelMode(QProcess::MergedChannels);
    stop.setProcessEnvironment(childEnvironment());
    if (startHelper(stop, serviceDisconnectArguments(m_option.type))) {
        waitForHelperEnd(stop, kHelperLimitMs);
    }
    waitForHelperEnd(*m_process, kHelperLimitMs);
    if (isInterruptionRequested()) {
        stop.kill();
        stop.waitForFinished();
        return;
    }
    readChunk(stop);
    readChunk(*m_process);
    emit message(QStringLiteral("Connection canceled."));
}

/// Hangs up.
void VPNClient::disconnectService()
{
    if (!startHelper(*m_process, serviceDisconnectArguments(m_option.type))) {
        failToStop(tr("start vpn helper process failed."));
    } else if (!waitForHelperEnd(*m_process, kHelperLimitMs)) {
        failToStop(tr("stop local vpn failed."));
    } else {
        readChunk(*m_process);
        if (state() == CONNECTED) {
            fail(tr("unexpected vpn disconnected."));
        }
    }
}

/// Reports that hanging up failed, although the client is disconnecting: the service may still be up.
void VPNClient::failToStop(const QString &text)
{
    if (!isInterruptionRequested()) {
        emit message(QStringLiteral("[ERROR]") + text);
        setState(VPNERROR);
    }
}
