#include "account/Archive.h"

#include "account/ServerLists.h"
#include "common/AppPath.h"
#include "platform/Tool.h"

#include <QDebug>
#include <QFile>

static void runArchiveTool(const QString &tool, const QStringList &arguments)
{
    const ToolResult result = runToolInEventLoop(tool, arguments);
    if (!result.finished || result.exitCode != 0) {
        const QString reason = result.started ? QString::fromLocal8Bit(result.errors).trimmed()
                                              : QStringLiteral("it can not be started");
        qDebug().noquote() << "WARNING: unpacking failed:" << tool << reason;
    }
}

static QString zipTool()
{
    return appPath("/compose7");
}

static void unpackZip(const QString &archive, const QString &destination)
{
    runArchiveTool(zipTool(), {QStringLiteral("-o"), archive, QStringLiteral("-d"), destination});
}

static QString sevenZipTool()
{
    return appPath("/compose6");
}

static void unpackSevenZip(const QString &archive, const QString &destination)
{
    runArchiveTool(sevenZipTool(),
                   {QStringLiteral("x"), QLatin1String("-o") + destination, QStringLiteral("-y"), archive});
}

bool UncompressFile(QString archive)
{
    if (!QFile::exists(zipTool())) {
        return false;
    }
    unpackZip(archive, profileFolder());
    return true;
}

bool Uncompress(QString archive, QString destination)
{
    if (archive.endsWith(QLatin1String(".zip")) && QFile::exists(zipTool())) {
        unpackZip(archive, destination);
        return true;
    }
    if (archive.endsWith(QLatin1String(".7z")) && QFile::exists(sevenZipTool())) {
        unpackSevenZip(archive, destination);
        return true;
    }
    return false;
}

void UncompressEx(QString archive, QString destination, QString type)
{
    if (type.contains(QLatin1String("7z"))) {
        unpackSevenZip(archive, destination);
    }
    if (type.contains(QLatin1String("zip"))) {
        unpackZip(archive, destination);
    }
}
