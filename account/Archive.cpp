#include "account/Archive.h"

#include "account/ServerLists.h"
#include "common/AppPath.h"
#include "platform/Tool.h"

#include <QDebug>
#include <QFile>

/// Returns why the tool has failed; empty where it has not.
static QString runArchiveTool(const QString &tool, const QStringList &arguments)
{
    const ToolResult result = runToolInEventLoop(tool, arguments);
    if (result.finished && result.exitCode == 0) {
        return {};
    }
    QString reason =
        result.started ? QString::fromLocal8Bit(result.errors).trimmed() : QStringLiteral("it can not be started");
    qDebug().noquote() << "WARNING: unpacking failed:" << tool << reason;
    return reason.isEmpty() ? QStringLiteral("no reason") : reason;
}

static QString zipTool()
{
    return appPath("/compose7");
}

static QString unpackZip(const QString &archive, const QString &destination)
{
    return runArchiveTool(zipTool(), {QStringLiteral("-o"), archive, QStringLiteral("-d"), destination});
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

bool UncompressFile(QString archive, QString *problem)
{
    const bool hasTool = QFile::exists(zipTool());
    const QString reason =
        hasTool ? unpackZip(archive, profileFolder()) : QStringLiteral("there is nothing to unpack it with");
    if (problem != nullptr) {
        *problem = reason;
    }
    return hasTool;
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
