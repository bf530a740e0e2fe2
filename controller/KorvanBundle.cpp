#include "controller/Korvan.h"

#include "account/Archive.h"
#include "account/LastProfile.h"
#include "account/ServerLists.h"
#include "base/Settings.h"
#include "common/AppPath.h"
#include "common/Paths.h"
#include "common/StateFile.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QMessageBox>
#include <QPointer>

/// Whether the archive tool says that there was no room for what it wrote.
static bool isForWantOfRoom(const QString &problem)
{
    return problem.contains(QLatin1String("No space left on device")) ||
           problem.contains(QLatin1String("Disk quota exceeded"));
}

/// The files of the servers, each with the time at which anything last changed it.
static QMap<QString, QDateTime> serverFiles(const QString &folder)
{
    QMap<QString, QDateTime> files;
    for (QDirIterator next(folder, {QStringLiteral("*.ovpn")}); next.hasNext();) {
        next.next();
        files.insert(next.fileName(), next.fileInfo().metadataChangeTime());
    }
    return files;
}

void Korvan::releaseCompressedConfig(QByteArray archive)
{
    const QString folder = profileFolder();
    const QString path = folder + QLatin1String("config");
    keepLastProfile();
    ClearPath(folder);
    for (const QFileInfo &left : QDir(folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (!left.fileName().contains(QLatin1String("custom"), Qt::CaseInsensitive)) {
            QDir_removeFolder(left.filePath());
        }
    }
    QDir().mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner); // it gets private keys
    const bool isStored = writeWhole(path, archive);
    const QMap<QString, QDateTime> spared = serverFiles(folder);
    QString problem;
    const QPointer<Korvan> self(this);
    const bool hasTool = UncompressFile(path, &problem);
    if (self.isNull()) {
        return;
    }
    if (!hasTool) {
        QMessageBox::critical(this, tr("Error"), tr("Korvan compose7 is missed."));
    }
    if (getSetting(QStringLiteral("DEBUG/ENABLE")) != QLatin1String("true")) {
        QFile::remove(path);
    }
    const QString unpackedList = folder + QLatin1String("L2TP.txt");
    if (QFileInfo(unpackedList).isFile()) {
        QFile::remove(l2tpListPath());
        QFile::rename(unpackedList, l2tpListPath());
    }
    if (problem.isEmpty() && serverFiles(folder) != spared) {
        m_answer = ProfileAnswer::None;
        forgetLastProfile();
    } else if (m_answer == ProfileAnswer::Damaged && (!isStored || !hasTool || isForWantOfRoom(problem))) {
        m_answer = ProfileAnswer::Unstored;
    }
}
