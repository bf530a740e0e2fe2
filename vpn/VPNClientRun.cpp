#include "vpn/VPNClient.h"

#include "common/Text.h"
#include "platform/Tool.h"
#include "vpn/VPNTables.h"
#include "vpn/WorkerLimits.h"

#include <QElapsedTimer>

void VPNClient::run()
{
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    m_process->setProcessEnvironment(childEnvironment());
    switch (m_option.type) {
    case OPENVPN:
        runOpenVPN();
        break;
    case PPTP:
    case L2TP:
    case IKEV2:
        runService();
        break;
    case SSTP:
        runSstp();
        break;
    }
    m_process->moveToThread(thread()); // whose event loop reaps a helper that is still running
    m_ended = true;
}

/// Whether this worker is to end: cancelled by close(), or told to end at once.
bool VPNClient::isStopping() const
{
    return state() == DISCONNECTING || isInterruptionRequested();
}

/// Starts the helper of the connection's type; false when it did not start in time.
bool VPNClient::startHelper(QProcess &process, const QStringList &arguments)
{
    process.start(helperPath(VPNCOMPOSE[m_option.type]), arguments, QIODevice::ReadWrite);
    QElapsedTimer waited;
    waited.start();
    while (process.state() == QProcess::Starting && waited.elapsed() < kHelperLimitMs && !isInterruptionRequested()) {
        process.waitForStarted(kPollMs);
    }
    return process.state() == QProcess::Running;
}

/// Waits for a helper's end, in short steps so that close() can end the worker. False when the helper is still
/// running.
bool VPNClient::waitForHelperEnd(QProcess &process, int limitMs)
{
    QElapsedTimer waited;
    waited.start();
    while (process.state() != QProcess::NotRunning && waited.elapsed() < limitMs && !isInterruptionRequested()) {
        process.waitForFinished(kPollMs);
    }
    return process.state() == QProcess::NotRunning;
}

void VPNClient::killHelper()
{
    m_process->kill();
    waitForHelperEnd(*m_process, kKillLimitMs);
}

/// All there is to read, up to the first NUL, passed on as a message.
QString VPNClient::readChunk(QIODevice &device)
{
    QString chunk = latin1UpToNul(device.readAll());
    emit message(chunk);
    return chunk;
}

/// The worker's own way to change the state: never out of DISCONNECTING, so that no marker that arrives just then
/// undoes a cancel. False when it was cancelled.
bool VPNClient::moveTo(STATE s)
{
    STATE current = m_state;
    while (current != s) {
        if (current == DISCONNECTING) {
            return false;
        }
        if (m_state.compare_exchange_weak(current, s)) {
            announce(s);
        }
    }
    return true;
}

/// Reports why the connection failed. After a cancel nothing is said.
void VPNClient::fail(const QString &text)
{
    if (state() != DISCONNECTING) {
        emit message(QStringLiteral("[ERROR]") + text);
        moveTo(VPNERROR);
    }
}
