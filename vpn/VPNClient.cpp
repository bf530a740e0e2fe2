#include "vpn/VPNClient.h"

#include "common/Wait.h"
#include "platform/RootPart.h"
#include "vpn/HelperOutput.h"
#include "vpn/HelperStart.h"
#include "vpn/OpenVPNWorker.h"
#include "vpn/ServiceWorker.h"
#include "vpn/SstpWorker.h"
#include "vpn/VPNAgent.h"
#include "vpn/VPNTables.h"

#include <QElapsedTimer>
#include <QFile>

/// How long close() leaves the worker to take the connection down by itself.
static constexpr int kGraceMs = 3000;
/// How long a worker that was told to end may take for it. It looks every 50 ms.
static constexpr int kInterruptionMs = 1000;
/// How long a worker that reported an error may take to return from run().
static constexpr int kReturnMs = 50;
/// A connection that comes up this late before open()'s limit counts as timed out, too.
static constexpr int kTimeoutMarginMs = 1000;

VPNClient::VPNClient() = default;

VPNClient::~VPNClient()
{
    close();
    endWorker();
    dropHelper();
}

VPNClient::STATE VPNClient::state() const
{
    return m_state;
}

VPNClient::TYPE VPNClient::type() const
{
    return m_option.type;
}

void VPNClient::setState(STATE s)
{
    if (m_state.exchange(s) != s) {
        announce(s);
    }
}

void VPNClient::setStateUnlessClosing(STATE s)
{
    STATE current = m_state;
    while (current != DISCONNECTING && current != s) {
        if (m_state.compare_exchange_weak(current, s)) {
            announce(s);
            return;
        }
    }
}

void VPNClient::announce(STATE s)
{
    emit stateChanged(s);
    switch (s) {
    case DISCONNECTED:
        emit disconnected();
        break;
    case DISCONNECTING:
        emit disconnecting();
        break;
    case CONNECTING:
        emit connecting();
        break;
    case CONNECTED:
        emit connected();
        if (m_agent) {
            m_agent->start();
        }
        break;
    case VPNERROR:
        emit vpnerror();
        break;
    }
}

void VPNClient::byteCount(quint64 &received, quint64 &sent)
{
    if (received == 0 && sent == 0) {
        received = m_bytesReceived;
        sent = m_bytesSent;
    } else {
        m_bytesReceived = received;
        m_bytesSent = sent;
    }
}

void VPNClient::clearByteCount()
{
    m_bytesReceived = 0;
    m_bytesSent = 0;
}

/// Closes what is open and readies the helper of a new connection. False on a failure, which has been reported.
bool VPNClient::prepareAttempt(const OPTION &option)
{
    if (!isValidType(option.type)) {
        emit message(QLatin1String(kErrorPrefix) + tr("Type is not valid."));
        return false;
    }
    const STATE current = state();
    if ((current != DISCONNECTED && current != VPNERROR) || workerRuns()) {
        emit message(tr("State is %1, trying to close it.").arg(current));
        if (!close()) {
            emit message(QLatin1String(kErrorPrefix) + tr("Close opened connection failed."));
            return false;
        }
    }
    m_agent.reset(); // it reads the option
    m_option = option;
    if (!QFile::exists(helperPath(VPNCOMPOSE[option.type]))) {
        emit message(QLatin1String(kErrorPrefix) + tr("openvpn compose is missed."));
        setState(VPNERROR);
        return false;
    }
    const int attempt = m_attempt;
    const Refusal refusal = askForRoot(); // may wait for a person
    if (attempt != m_attempt) {
        return false;
    }
    if (!refusal.isEmpty()) {
        emit message(QLatin1String(kErrorPrefix) + refusal.english());
        setState(VPNERROR);
        return false;
    }
    clearByteCount(); // a new OpenVPN counts from 0
    m_agent = std::make_unique<VPNAgent>();
    m_agent->setClient(this);
    setState(CONNECTING);
    dropHelper();
    m_process = newHelper();
    m_process->moveToThread(this);
    return true;
}

bool VPNClient::open(OPTION option)
{
    if (!prepareAttempt(option)) {
        return false;
    }
    const int attempt = ++m_attempt;
    Wait wait; // listens before the worker starts: a fast one is up, or has failed, at once
    wait.until(this, &VPNClient::connected);
    wait.until(this, &QThread::finished);
    start();
    wait.run(m_timeout);
    if (attempt != m_attempt) {
        return false;
    }
    if (wait.waitedMs() >= m_timeout - kTimeoutMarginMs) {
        emit message(QLatin1String(kErrorPrefix) + tr("Connect to server timeout"));
        setState(VPNERROR);
        return false;
    }
    return isRunning();
}

bool VPNClient::close()
{
    ++m_attempt; // also one that has no worker yet
    if (m_closing || state() < CONNECTING || !workerRuns()) {
        return false;
    }
    m_closing = true;
    setState(DISCONNECTING);
    emit message(QStringLiteral("disconnecting from the network...\n"));
    QElapsedTimer waited;
    waited.start();
    Wait().run(kGraceMs);
    if (waited.elapsed() < kGraceMs) { // the application is quitting, which ends every event loop
        wait(static_cast<unsigned long>(kGraceMs - waited.elapsed()));
    }
    endWorker();
    if (m_process && m_process->state() == QProcess::Running) {
        emit message(QStringLiteral("worker thread is killed.\n"));
    }
    dropHelper();
    m_agent.reset();
    m_option.type = static_cast<TYPE>(-1);
    m_closing = false;
    setState(DISCONNECTED);
    return true;
}

void VPNClient::run()
{
    switch (m_option.type) {
    case OPENVPN:
        OpenVPNWorker(*this, *m_process, m_option).run();
        break;
    case PPTP:
    case L2TP:
    case IKEV2:
        ServiceWorker(*this, *m_process, m_option).run();
        break;
    case SSTP:
        SstpWorker(*this, *m_process, m_option).run();
        break;
    }
    m_process->moveToThread(thread()); // whose event loop reaps a helper that is still running
}

bool VPNClient::reset()
{
    return unsetup(SETUP(OPENVPN, QString(), QString(), QString()));
}

/// Whether the worker is at work. One that has just reported its error is on its way out and gets a moment for that,
/// so that the answer does not depend on who is faster.
bool VPNClient::workerRuns()
{
    return !wait(state() == VPNERROR ? kReturnMs : 0);
}

/// Ends the worker. It looks for the interruption wherever it waits; one that is stuck elsewhere is terminated.
void VPNClient::endWorker()
{
    requestInterruption();
    if (!wait(kInterruptionMs)) {
        terminate();
        wait();
    }
}

/// Deletes the helper's process object. No worker is running, so it belongs to nobody else.
void VPNClient::dropHelper()
{
    if (m_process && m_process->state() != QProcess::NotRunning) {
        m_process->kill();
        m_process->waitForFinished();
    }
    m_process.reset();
}
