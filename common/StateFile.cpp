#include "common/StateFile.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

static bool refuse(const QString &path, const QString &reason)
{
    qDebug().noquote() << "WARNING: can not write" << path << reason;
    return false;
}

QByteArray readWhole(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeWhole(const QString &path, const QByteArray &bytes)
{
    const QFileInfo info(path);
    if (info.isSymLink()) {
        return refuse(path, QStringLiteral("it is a symbolic link"));
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return refuse(path, file.errorString());
    }
    if (!file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) || file.write(bytes) != bytes.size() ||
        !file.commit()) {
        return refuse(path, file.errorString());
    }
    return true;
}
