#include "vpn/ServiceWorker.h"

#include "vpn/HelperArguments.h"
#include "vpn/HelperOutput.h"
#include "vpn/HelperStart.h"

/// The status command runs every so many steps of 50 ms: about every 10 s.
static constexpr int kStepsPerStatus = 200;

void ServiceWorker::run()
{
    if (!start(m_helper, serviceConnectArguments(m_option))) {
        fail(VPNClient::tr("start vpn helper process failed."));
        return;
    }
    if (!dial()) {
        if (state() == VPNClient::DISCONNECTING) {
            cancel();
        }
        return;
    }
    readChunk(m_helper);
    if (state() == VPNClient::CONNECTING) {
        fail(VPNClient::tr("vpn connect error, please check log"));
        return;
    }
    monitor();
    if (state() == VPNClient::DISCONNECTING && !isInterrupted()) {
        hangUp();
    }
}

/// Follows the dialling helper. True when it has ended; false when it failed or is to be stopped before its end.
bool ServiceWorker::dial()
{
    while (!isStopping()) {
        if (m_helper.state() != QProcess::Running) {
            return true;
        }
        if (!m_helper.waitForReadyRead(kPollMs)) {
            continue;
        }
        if (isStopping()) {
            return false;
        }
        const QString chunk = readChunk(m_helper);
        const ServiceOutput outcome = classifyService(chunk);
        if (outcome == ServiceOutput::Success) {
            moveTo(VPNClient::CONNECTED);
        } else if (outcome == ServiceOutput::Error) {
            fail(chunk);
            return false;
        }
    }
    return false;
}

/// Watches the network service, at once and then about every 10 s, until it is gone or the client disconnects.
void ServiceWorker::monitor()
{
    for (int step = 0; !isStopping(); step = (step + 1) % kStepsPerStatus) {
        if (step != 0) {
            QThread::msleep(kPollMs);
        } else if (!check()) {
            return;
        }
    }
}

/// Runs the status command and stores its byte counts. False when the service is no longer up.
bool ServiceWorker::check()
{
    if (!start(m_helper, serviceStatusArguments(m_option.type))) {
        fail(VPNClient::tr("start vpn helper process failed."));
        return false;
    }
    while (m_helper.state() != QProcess::NotRunning && !isStopping()) {
        m_helper.waitForFinished(kPollMs);
    }
    if (m_helper.state() != QProcess::NotRunning) {
        killHelper(); // hanging up comes first
        return false;
    }
    const QByteArray output = m_helper.readAll();
    ByteCount count = parseServiceCounts(output);
    m_client.byteCount(count.received, count.sent); // stores, unless both are 0
    if (output.contains("Success")) {
        return true;
    }
    report(outputMessage(output));
    if (state() == VPNClient::CONNECTED) {
        fail(VPNClient::tr("unexpected vpn disconnected."));
    }
    return false;
}

/// Stops the dialling: hangs up with a second helper, which makes the first one end.
void ServiceWorker::cancel()
{
    const std::unique_ptr<HelperProcess> stop = newHelper();
    if (start(*stop, serviceDisconnectArguments(m_option.type))) {
        waitForEnd(*stop, kHelperLimitMs);
    }
    waitForEnd(m_helper, kHelperLimitMs);
    if (isInterrupted()) {
        stop->kill();
        stop->waitForFinished();
        return;
    }
    readChunk(*stop);
    readChunk(m_helper);
    report(QStringLiteral("Connection canceled."));
}

/// Hangs up.
void ServiceWorker::hangUp()
{
    if (!start(m_helper, serviceDisconnectArguments(m_option.type))) {
        failToStop(VPNClient::tr("start vpn helper process failed."));
    } else if (!waitForEnd(m_helper, kHelperLimitMs)) {
        failToStop(VPNClient::tr("stop local vpn failed."));
    } else {
        readChunk(m_helper);
        if (state() == VPNClient::CONNECTED) {
            fail(VPNClient::tr("unexpected vpn disconnected."));
        }
    }
}

/// Reports that hanging up failed, although the client is disconnecting: the service may still be up.
void ServiceWorker::failToStop(const QString &text)
{
    if (!isInterrupted()) {
        report(QLatin1String(kErrorPrefix) + text);
        m_client.setState(VPNClient::VPNERROR);
    }
}
