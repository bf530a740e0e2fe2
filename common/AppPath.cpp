#include "common/AppPath.h"

#include <QCoreApplication>

QString appPath(const QString &suffix)
{
    return QCoreApplication::applicationDirPath() + suffix;
}

QString appPath(const char *suffix)
{
    return appPath(QString::fromLatin1(suffix));
}
