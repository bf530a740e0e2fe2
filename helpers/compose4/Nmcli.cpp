#include "helpers/compose4/Nmcli.h"

#include <QElapsedTimer>
#include <QProcess>

#include <csignal>
#include <sys/prctl.h>

static const char *const kNmcli = "/usr/bin/nmcli";

class ChildProcess : public QProcess
{
protected:
    void setupChildProcess() override { prctl(PR_SET_PDEATHSIG, SIGKILL); }
};

NmcliResult nmcli(const QStringList &arguments, int limitMs, const volatile int *stop)
{
    constexpr int kSliceMs = 50;
    ChildProcess process;
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/sbin:/usr/bin:/sbin:/bin"));
    process.setProcessEnvironment(environment);
    process.start(QString::fromLatin1(kNmcli), arguments);
    NmcliResult result;
    result.started = process.waitForStarted(limitMs);
    QElapsedTimer clock;
    clock.start();
    while (process.state() != QProcess::NotRunning && !process.waitForFinished(kSliceMs)) {
        if (clock.hasExpired(limitMs) || (stop && *stop != 0)) {
            process.kill();
            process.waitForFinished();
            return result;
        }
    }
    if (result.started && process.exitStatus() == QProcess::NormalExit) {
        result.status = process.exitCode();
    }
    result.output = process.readAllStandardOutput();
    result.error = process.readAllStandardError().split('\n').first().trimmed();
    return result;
}
