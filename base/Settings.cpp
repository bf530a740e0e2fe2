#include "base/Settings.h"

#include "common/AppPath.h"

#include <QSettings>

QString getSetting(const QString &key)
{
    return QSettings(appPath("/setting.ini"), QSettings::IniFormat).value(key, QString()).toString();
}
