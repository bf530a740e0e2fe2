#include "platform/Tool.h"

#include "common/Wait.h"
#include "platform/HelperProcess.h"

QProcessEnvironment childEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    return environment;
}

/// `finish` waits for the process's end and returns whether it came.
template <typename Finish> static ToolResult run(const QString &program, const QStringList &arguments, Finish finish)
{
    HelperProcess process;
    process.setProcessEnvironment(childEnvironment());
    process.start(program, arguments);
    ToolResult result;
    result.started = process.waitForStarted(kToolLimitMs);
    if (!result.started) {
        return result;
    }
    result.finished = process.state() == QProcess::NotRunning || finish(process);
    result.output = process.readAllStandardOutput();
    result.errors = process.readAllStandardError();
    if (result.finished) {
        result.exitCode = process.exitCode();
    } else {
        process.kill();
        process.waitForFinished(1000);
    }
    return result;
}

ToolResult runTool(const QString &program, const QStringList &arguments, int finishLimitMs)
{
    return run(program, arguments, [=](QProcess &process) { return process.waitForFinished(finishLimitMs); });
}

ToolResult runToolInEventLoop(const QString &program, const QStringList &arguments, int finishLimitMs)
{
    return run(program, arguments, [=](QProcess &process) {
        Wait wait;
        wait.until(&process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished));
        return wait.run(finishLimitMs) || (finishLimitMs < 0 && process.waitForFinished(kToolLimitMs));
    });
}
