#include "common/AppPath.h"

#include "names/StateFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

/// Whether the program itself writes it. The settings file is an administrator's.
static bool isState(const QString &suffix)
{
    const QString first = suffix.left(suffix.indexOf(QLatin1Char('/'), 1));
    return first != QLatin1String(kSettingsFile) &&
           std::any_of(std::begin(kStateFiles), std::end(kStateFiles),
                       [&first](const StateFile &file) { return first == QLatin1String(file.path); });
}

/// Made, for nobody else to look into, when it is not there.
static QString personsFolder()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QLatin1String("/korvan");
    QDir().mkpath(folder.left(folder.lastIndexOf(QLatin1Char('/'))));
    const QByteArray path = QFile::encodeName(folder);
    mkdir(path.constData(), 0700);
    chmod(path.constData(), 0700);
    return folder;
}

QString appPath(const QString &suffix)
{
    if (isState(suffix) && geteuid() != 0) {
        static const QString folder = personsFolder();
        return folder + suffix;
    }
    return QCoreApplication::applicationDirPath() + suffix;
}

QString appPath(const char *suffix)
{
    return appPath(QString::fromLatin1(suffix));
}
