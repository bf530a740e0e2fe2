#include "vpn/SstpWorker.h"

#include "common/AppPath.h"
#include "names/StateFiles.h"
#include "vpn/HelperArguments.h"
#include "vpn/HelperOutput.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

/// The pause between two looks at the log file.
static constexpr int kLogPauseMs = 3000;

void SstpWorker::run()
{
    QDir().mkpath(QStringLiteral("/etc/ppp/"));
    QFile::remove(appPath(kSstpLogFile));
    // Never overwrites: the options that were installed first stay, with what the machine's owner changed in them.
    QFile::copy(appPath("/options"), QStringLiteral("/etc/ppp/options"));
    if (state() == VPNClient::DISCONNECTED || state() == VPNClient::DISCONNECTING) {
        report(QStringLiteral("Connection canceled."));
        return;
    }
    m_helper.setStandardOutputFile(QProcess::nullDevice()); // it reports in its log file
    if (!start(m_helper, sstpArguments(m_option))) {
        fail(VPNClient::tr("start vpn helper process failed."));
        return;
    }
    followLog();
}

/// Reads what the SSTP client adds to its log file until it ends. Its end is not reported: the state stays as it is.
void SstpWorker::followLog()
{
    qint64 offset = 0;
    while (m_helper.state() == QProcess::Running && !isInterrupted()) {
        if (state() == VPNClient::DISCONNECTED || state() == VPNClient::DISCONNECTING) {
            report(QStringLiteral("Connection canceled."));
            killHelper();
            return;
        }
        QFile log(appPath(kSstpLogFile));
        const qint64 size = log.size();
        auto outcome = SstpOutput::Other;
        if (size != offset && log.open(QIODevice::ReadOnly) && log.seek(offset)) {
            outcome = actOn(readChunk(log));
        }
        offset = size;
        if (outcome == SstpOutput::Other) {
            pause();
        }
    }
}

SstpOutput SstpWorker::actOn(const QString &chunk)
{
    const SstpOutput outcome = classifySstp(chunk);
    if (outcome == SstpOutput::Connected) {
        moveTo(VPNClient::CONNECTED);
    } else if (outcome == SstpOutput::AuthFailed) {
        fail(VPNClient::tr("username or password is not matched."));
    }
    return outcome;
}

/// Waits until the next look at the log file; a cancel and the helper's end cut it short.
void SstpWorker::pause()
{
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < kLogPauseMs && !isStopping() && m_helper.state() == QProcess::Running) {
        m_helper.waitForFinished(kPollMs);
    }
}
