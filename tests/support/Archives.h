#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <sys/stat.h>

/// One entry of an archive that a test makes; `mode` holds the type too.
struct Item
{
    QByteArray name;
    QByteArray bytes; ///< or where the link leads
    mode_t mode = S_IFREG | 0644;
    int copies = 1; ///< how often `bytes` are written
};
using Items = QVector<Item>;

/// Writes the items without any check of their names: as 7z when the path ends so, else as ZIP.
void buildArchive(const QString &path, const Items &items);
