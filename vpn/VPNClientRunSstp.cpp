#include "vpn/VPNClient.h"

#include "common/AppPath.h"
#include "vpn/HelperArguments.h"
#include "vpn/HelperOutput.h"
#include "vpn/WorkerLimits.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

/// The pause between two looks at the log file.
static constexpr int kLogPauseMs = 3000;

void VPNClient::runSstp()
{
    QDir().mkpath(QStringLiteral("/etc/ppp/"));
    QFile::remove(appPath("/vpnlog.txt"));
    // Never overwrites: the options that were installed first stay, with what the machine's owner changed in them.
    QFile::copy(appPath("/options"), QStringLiteral("/etc/ppp/options"));
    if (state() == DISCONNECTED || state() == DISCONNECTING) {
        emit message(QStringLiteral("Connection canceled."));
        return;
    }
    m_process->setStandardOutputFile(QProcess::nullDevice()); // it reports in its log file
    if (!startHelper(*m_process, sstpArguments(m_option))) {
        fail(tr("start vpn helper process failed."));
        return;
    }
    followSstpLog();
}

/// Reads what the SSTP client adds to its log file until it ends. Its end is not reported: the state stays as it is.
void VPNClient::followSstpLog()
{
    qint64 offset = 0;
    while (m_process->state() == QProcess::Running && !isInterruptionRequested()) {
        if (state() == DISCONNECTED || state() == DISCONNECTING) {
            emit message(QStringLiteral("Connection canceled."));
            killHelper();
            return;
        }
        QFile log(appPath("/vpnlog.txt"));
        const qint64 size = log.size();
        auto outcome = SstpOutput::Other;
        if (size != offset && log.open(QIODevice::ReadOnly) && log.seek(offset)) {
            outcome = actOnSstp(readChunk(log));
        }
        offset = size;
        if (outcome == SstpOutput::Other) {
            pauseSstp();
        }
    }
}

SstpOutput VPNClient::actOnSstp(const QString &chunk)
{
    const SstpOutput outcome = classifySstp(chunk);
    if (outcome == SstpOutput::Connected) {
        moveTo(CONNECTED);
    } else if (outcome == SstpOutput::AuthFailed) {
        fail(tr("username or password is not matched."));
    }
    return outcome;
}

/// Waits until the next look at the log file; a cancel and the helper's end cut it short.
void VPNClient::pauseSstp()
{
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < kLogPauseMs && !isStopping() && m_process->state() == QProcess::Running) {
        m_process->waitForFinished(kPollMs);
    }
}
