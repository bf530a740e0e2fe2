#include "platform/KillProcess.h"

#include <cstdlib>

void killProcessByName(const QString &name)
{
    const QString command = QStringLiteral("ps -ef|grep %1|grep -v grep|awk '{print $2}'|xargs kill").arg(name);
    const int status = std::system(command.toLocal8Bit().constData()); // NOLINT(cert-env33-c)
    Q_UNUSED(status)
}
