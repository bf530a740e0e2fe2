#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <unistd.h>

void putFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size()) {
        qFatal("can not write %s", qPrintable(path));
    }
}

void putScript(const QString &path, const QByteArray &body)
{
    putFile(path, "#!/bin/bash\n" + body);
    QFile::setPermissions(path, QFile::Permissions(0x7755)); // rwx for both kinds of owner, r-x for others
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool canUseLab()
{
    if (geteuid() == 0 && access("/dev/net/tun", R_OK | W_OK) == 0) {
        return true;
    }
    std::puts("SKIPPED WHOLE TEST: it needs root and /dev/net/tun");
    return false;
}
