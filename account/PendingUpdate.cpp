#include "account/PendingUpdate.h"

#include "common/AppPath.h"
#include "common/Paths.h"
#include "common/StateFile.h"
#include "names/Names.h"
#include "names/StateFiles.h"
#include "platform/RootUpdate.h"
#include "platform/Tool.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>

static QString updater()
{
    return appPath("/compose9");
}

static QString handedOver(const char *path)
{
    return appPath(kNewUpdateFolder) + QLatin1String(path + sizeof "/update" - 1);
}

bool updatesAreSigned()
{
    return QFile::exists(appPath("/") + QLatin1String(kUpdateKeysFile));
}

/// What the updater says of two files.
static QString check(const QString &archive, const QString &signature)
{
    const ToolResult result = runToolInEventLoop(updater(), {QStringLiteral("--check"), archive, signature});
    if (result.finished && result.exitCode == 0) {
        return {};
    }
    const QString reason = QString::fromLocal8Bit(result.errors).trimmed();
    return reason.isEmpty() ? QStringLiteral("it can not be checked") : reason;
}

QString storeUpdate(const QByteArray &archive, const QString &signature)
{
    const bool isSigned = updatesAreSigned();
    const QString file = handedOver(kUpdateArchive);
    const QString signatureFile = handedOver(kUpdateSignature);
    QDir_removeFolder(appPath(kNewUpdateFolder));
    QString problem;
    if (!QDir().mkpath(appPath(kNewUpdateFolder)) || !writeWhole(file, archive) ||
        (isSigned && !writeWhole(signatureFile, signature.toLatin1()))) {
        problem = QStringLiteral("the archive can not be stored");
    } else if (isSigned) {
        problem = check(file, signatureFile);
    }
    if (problem.isEmpty()) {
        QDir_removeFolder(appPath(kUpdateFolder));
        if (!QDir().rename(appPath(kNewUpdateFolder), appPath(kUpdateFolder))) {
            problem = QStringLiteral("the archive can not be stored");
        }
    }
    QDir_removeFolder(appPath(kNewUpdateFolder));
    return problem;
}

QString whyNotAccepted()
{
    return check(appPath(kUpdateArchive), appPath(kUpdateSignature));
}

QString giveUpdateToRootPart(const QStringList &arguments)
{
    removeHandedOverUpdate();
    if (!QDir().rename(appPath(kUpdateFolder), appPath(kNewUpdateFolder))) {
        return QStringLiteral("the archive can not be stored");
    }
    return installThroughRootPart(handedOver(kUpdateArchive), readWhole(handedOver(kUpdateSignature)), arguments);
}

bool handOverSignedUpdate()
{
    removeHandedOverUpdate();
    return QDir().rename(appPath(kUpdateFolder), appPath(kNewUpdateFolder)) &&
           QProcess::startDetached(
               updater(), {QStringLiteral("--install"), handedOver(kUpdateArchive), handedOver(kUpdateSignature)});
}

void removeHandedOverUpdate()
{
    if (QDir(appPath(kNewUpdateFolder)).exists()) {
        QDir_removeFolder(appPath(kNewUpdateFolder));
    }
}
