#include "tests/support/Shell.h"

#include <QProcess>

QByteArray runShell(const QString &folder, const QString &script, const QByteArray &input)
{
    QProcess shell;
    shell.setWorkingDirectory(folder);
    shell.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    shell.start("bash", {"-c", script});
    shell.write(input);
    shell.closeWriteChannel();
    if (!shell.waitForFinished(90000)) {
        qFatal("no end of: %s", qPrintable(script));
    }
    return shell.readAllStandardOutput();
}
