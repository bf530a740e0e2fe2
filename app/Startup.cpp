#include "app/Startup.h"

#include "account/Archive.h"
#include "account/PendingUpdate.h"
#include "account/UpdateReason.h"
#include "base/DebugLog.h"
#include "common/AppPath.h"
#include "common/Paths.h"
#include "common/StateFile.h"
#include "controller/Appearance.h"
#include "names/Names.h"
#include "names/StateFiles.h"
#include "platform/RootPart.h"
#include "platform/Tool.h"
#include "platform/TunnelHolder.h"
#include "route/DefaultGateway.h"
#include "vpn/VPNClient.h"

#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QProcess>
#include <QTextCodec>

/// Exactly the name that the download gives the archive; any other file in the folder is not an update.
static const QString kArchiveName = QStringLiteral("update.zip");

static const QString kAny = QStringLiteral("0.0.0.0");

/// Whether removed default routes wait to be put back: of a program that was killed together with their guardian, or
/// of one that runs.
static bool isLockDownLeft()
{
    return QFile::exists(QLatin1String(kJournalFolder) + QLatin1Char('/') + QLatin1String(kNetworkJournal));
}

/// Beside the bundle, three levels above the application folder.
static QString stagingFolder()
{
    return QDir_clearPath(appPath("/../../../update.temp"));
}

void useUtf8()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

QString loadCurrentVersion()
{
    return QString::fromUtf8(readWhole(appPath("/version")).constData());
}

void deleteOldLog()
{
    PATH_LOG = appPath(PATH_LOG);
    QFile::remove(PATH_LOG);
}

void preferBundledTools()
{
    qputenv("PATH", QFile::encodeName(appPath("/tools")) + ':' + qgetenv("PATH"));
}

/// Tells the person. Where there is no screen nobody could close the box; then only the log tells it.
static void showBox(QMessageBox::Icon icon, const QString &title, const QString &text)
{
    if (QApplication::platformName() != QLatin1String("offscreen")) {
        QMessageBox(icon, title, text, QMessageBox::Ok).exec();
    }
}

static PendingUpdate tellUpdateFailed(const QString &reason)
{
    qDebug().noquote() << "[ERROR]Update failed," << reason + QLatin1Char('.');
    QDir_removeFolder(appPath(kUpdateFolder));
    showBox(QMessageBox::Information, QApplication::tr("Update"),
            QApplication::tr("Update failed, %1.").arg(translatedReason(reason)));
    return PendingUpdate::None;
}

/// The signed update that waits: hands it over, or tells why it is not accepted and deletes it.
static PendingUpdate installSignedUpdate(const char *argument)
{
    if (const QString reason = whyNotAccepted(); !reason.isEmpty()) {
        return tellUpdateFailed(reason);
    }
    if (!isStartedByRoot()) {
        if (const Refusal refusal = askForRoot(); !refusal.isEmpty()) {
            qDebug().noquote() << "WARNING: the update waits:" << refusal.english();
            return PendingUpdate::None;
        }
        const QString argumentText = QString::fromLatin1(argument);
        const QString reason =
            giveUpdateToRootPart(argumentText.isEmpty() ? QStringList() : QStringList(argumentText));
        return reason.isEmpty() ? PendingUpdate::HandedOver : tellUpdateFailed(reason);
    }
    qputenv(kRestartArgument, argument);
    if (!handOverSignedUpdate()) {
        showBox(QMessageBox::Critical, QApplication::tr("Error"), QApplication::tr("Can not start update compose."));
        return PendingUpdate::None;
    }
    return PendingUpdate::HandedOver;
}

PendingUpdate installPendingUpdate(const char *argument)
{
    const QStringList names = QDir(appPath(kUpdateFolder)).entryList(QDir::Files, QDir::Unsorted);
    if (!names.contains(kArchiveName)) {
        return PendingUpdate::None;
    }
    const Appearance appearance;
    appearance.show();
    if (const Refusal reason = whyNoUpdates(); !reason.isEmpty()) {
        showBox(QMessageBox::Information, QApplication::tr("Update"), reason.translated());
        QDir_removeFolder(appPath("/update/"));
        return PendingUpdate::None;
    }
    QMessageBox waiting(QMessageBox::Warning, QStringLiteral("Korvan"),
                        QApplication::tr("Updating...Please wait a moment."));
    waiting.show();
    if (!QFile::exists(appPath("/compose9"))) {
        waiting.setText(QApplication::tr("compose9 is missed, update failed."));
        qDebug("compose9 is missed, update failed.");
        return PendingUpdate::HelperMissing;
    }
    if (updatesAreSigned()) {
        waiting.hide();
        return installSignedUpdate(argument);
    }
    qputenv(kRestartArgument, argument);
    const QString staging = stagingFolder() + QLatin1Char('/');
    const QString archive = staging + kArchiveName;
    const QString helper = staging + QLatin1String("compose9");
    if (!QDir().mkdir(staging) && !QDir(staging).exists()) {
        qDebug().noquote() << "[ERROR]Update failed: can not make" << staging;
        return PendingUpdate::None; // the archive waits for another start
    }
    QFile::rename(appPath(kUpdateArchive), archive);
    QFile::rename(appPath("/compose9"), helper); // it leaves the bundle that it is about to replace
    Uncompress(archive, staging);
    if (!QProcess::startDetached(helper, {staging, QStringLiteral("Korvan")})) {
        showBox(QMessageBox::Critical, QApplication::tr("Error"), QApplication::tr("Can not start update compose."));
    }
    return PendingUpdate::HandedOver;
}

QString takeUpdateFailure()
{
    const QString outcome = qEnvironmentVariable(kUpdateOutcome);
    qunsetenv(kUpdateOutcome);
    if (!outcome.isEmpty() && !isStartedByRoot()) { // elsewhere compose9 has written it there
        qDebug().noquote() << outcome;
    }
    const QLatin1String failed("[ERROR]Update failed: ");
    return outcome.startsWith(failed) ? outcome.mid(failed.size()) : QString();
}

void removeStagingFolder()
{
    removeHandedOverUpdate();
    if (isStartedByRoot() && QDir(stagingFolder()).exists()) {
        // A helper that never ran is not lost: without it no update could be installed again.
        QFile::rename(stagingFolder() + QLatin1String("/compose9"), appPath("/compose9"));
        QDir_removeFolder(stagingFolder());
    }
}

void cleanUpAfterTunnels()
{
    runTool(QStringLiteral("bash"), {appPath("/down.sh")});
    if (isLockDownLeft()) {
        AddGateway(kAny, kAny, QString()); // the journal knows the routes
    }
}

void showVersion()
{
    QMessageBox box(QMessageBox::Information, QApplication::tr("Version"),
                    QApplication::tr("Made by the Korvan team\n") +
                        QApplication::tr("Compiled in %1\n").arg(QLatin1String(__DATE__)) +
                        QApplication::tr("Current Version:") + QCoreApplication::applicationVersion());
    box.setInformativeText(
        QApplication::tr("Free software under the GNU General Public License, version 3 or later."));
    box.findChild<QLabel *>(QStringLiteral("qt_msgbox_informativelabel"))->setProperty("wide", true);
    box.exec();
}

void resetNetwork()
{
    const Refusal refusal = isStartedByRoot() ? takeTunnel() : askForRoot();
    if (!refusal.isEmpty()) {
        qDebug().noquote() << QLatin1String("[ERROR]") + refusal.english();
        showBox(QMessageBox::Warning, QApplication::tr("Error"), refusal.translated());
        return;
    }
    VPNClient client;
    QObject::connect(&client, &VPNClient::message, [](const QString &message) { qDebug().noquote() << message; });
    client.reset();
    runTool(QStringLiteral("bash"), {appPath("/down.sh")});
    const QString gateway = LoadDefaultGateway();
    if (!gateway.isEmpty() || isLockDownLeft()) { // harmless where nothing is missing
        AddGateway(kAny, kAny, gateway);
    }
}
