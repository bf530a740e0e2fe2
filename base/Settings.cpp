#include "base/Settings.h"

#include "common/AppPath.h"
#include "names/StateFiles.h"

#include <QSettings>

QString getSetting(const QString &key)
{
    return QSettings(appPath(kSettingsFile), QSettings::IniFormat).value(key, QString()).toString();
}

QStringList getSettingWords(const QString &key)
{
    // A value with commas is read as a list.
    const QSettings settings(appPath("/setting.ini"), QSettings::IniFormat);
    return settings.value(key).toStringList().join(QLatin1Char(' ')).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}
