#include "common/Paths.h"

#include <QDir>
#include <QFile>
#include <QProcess>

QString QDir_clearPath(QString path)
{
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    QString working = path;
    for (;;) {
        const int step = working.indexOf(QLatin1String("/.."));
        if (step < 0) {
            return working;
        }
        const int parent = step == 0 ? -1 : working.left(step - 1).lastIndexOf(QLatin1Char('/'));
        if (parent < 0) {
            return path;
        }
        working = working.left(parent) + working.mid(step + 3);
    }
}

bool QDir_removeFolder(const QString &path)
{
    QProcess rm;
    rm.start(QStringLiteral("rm"), {QStringLiteral("-rf"), QDir_clearPath(path)});
    rm.waitForFinished(30000);
    return true;
}

bool ClearPath(const QString &folder)
{
    bool allRemoved = true;
    const QStringList names = QDir(folder).entryList(QDir::NoFilter, QDir::Unsorted);
    for (const QString &name : names) {
        if (name == QLatin1String(".") || name == QLatin1String("..") ||
            name.contains(QLatin1String("custom"), Qt::CaseInsensitive)) {
            continue;
        }
        allRemoved = QFile::remove(folder + name) && allRemoved;
    }
    return allRemoved;
}
