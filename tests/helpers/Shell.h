#pragma once

#include <QByteArray>
#include <QProcess>

/// What the script prints on standard output, run by bash in the folder; it is ended after 90 seconds.
inline QByteArray runShell(const QString &folder, const QString &script)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start("bash", {"-c", script});
    process.waitForFinished(90000);
    return process.readAllStandardOutput();
}
