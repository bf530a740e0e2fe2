#include "base/Settings.h"

#include "common/AppPath.h"
#include "names/StateFiles.h"

#include <QSettings>

QString getSetting(const QString &key)
{
    return QSettings(appPath(kSettingsFile), QSettings::IniFormat).value(key, QString()).toString();
}
