#include "account/UpdateReason.h"
#include "app/Startup.h"
#include "base/DebugLog.h"
#include "controller/Appearance.h"
#include "controller/Korvan.h"
#include "platform/DesktopScale.h"
#include "platform/QuitSignals.h"
#include "platform/RootPart.h"
#include "platform/SetUserIdStart.h"
#include "platform/SingleInstance.h"
#include "platform/TunnelHolder.h"
#include "ui/KvUnaskedBox.h"
#include "ui/Language.h"
#include "ui/Look.h"
#include "ui/PlainText.h"

#include <QApplication>
#include <QDebug>
#include <QMessageBox>

#include <csignal>
#include <cstdio>
#include <cstdlib>

/// Exit statuses besides the event loop's own.
static constexpr int kUpdateHandedOver = 188;
static constexpr int kUpdateHelperMissing = -188;

/// The switches are recognised only where they are the one argument.
static bool isOnlyArgument(int argc, char *const *argv, const char *argument)
{
    return argc == 2 && qstrcmp(argv[1], argument) == 0;
}

/// A box above the window, whose own start goes on.
static void tell(Korvan &window, QMessageBox::Icon icon, const QString &title, const QString &text)
{
    auto *box = new KvUnaskedBox(icon, title, plainText(text), &window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

/// `refusal` tells the person why there is no tunnel to be had; empty when there is.
static int runWindow(SingleInstance &instance, bool show, const Refusal &refusal)
{
    Korvan window;
    const QuitSignals quitSignals; // gone before the window closes its connection: a second signal ends at once
    QObject::connect(&instance, &SingleInstance::startedAgain, &window, &Korvan::showOnTop);
    if (show) {
        window.show();
    } else {
        window.hideInTray();
    }
    if (!refusal.isEmpty()) {
        qDebug().noquote() << QLatin1String("[ERROR]") + refusal.english();
        if (window.isVisible()) { // one that waits in the tray must not bring up a box
            tell(window, QMessageBox::Critical, QApplication::tr("Error"), refusal.translated());
        }
    }
    if (const QString reason = takeUpdateFailure(); !reason.isEmpty()) {
        tell(window, QMessageBox::Information, QApplication::tr("Update"),
             QApplication::tr("Update failed, %1.").arg(translatedReason(reason)));
    }
    return QApplication::exec();
}

/// What the program does: show the running one, install an update, a box, a repair, or the window. `argument` is its
/// own one switch or empty, and what a start after an update is given. Returns the exit status.
static int run(SingleInstance &instance, const char *argument)
{
    const bool wantsVersion = qstrcmp(argument, "-version") == 0;
    const bool wantsReset = qstrcmp(argument, "-reset") == 0;
    if (!instance.isFirst() && !wantsVersion && !wantsReset) {
        instance.notifyFirst();
        return 0;
    }
    if (instance.isFirst()) { // nothing is swapped under a running program
        switch (installPendingUpdate(argument)) {
        case PendingUpdate::None:
            break;
        case PendingUpdate::HelperMissing:
            return kUpdateHelperMissing;
        case PendingUpdate::HandedOver:
            return kUpdateHandedOver;
        }
        removeStagingFolder();
    }
    if (wantsVersion || wantsReset) {
        instance.release();
        const Appearance appearance;
        appearance.show();
        wantsVersion ? showVersion() : resetNetwork();
        return 0;
    }
    const Refusal refusal = isStartedByRoot() ? takeTunnel() : askForRoot();
    if (isStartedByRoot() && refusal.isEmpty()) { // elsewhere the root part does
        cleanUpAfterTunnels();
    }
    return runWindow(instance, *argument == '\0', refusal);
}

int main(int argc, char *argv[])
{
    std::signal(SIGPIPE, SIG_IGN); // the log is copied to standard output, whose reader may go
    takeRootPart(dropSetUserId());
    const DesktopScale scale(kWindowSize);
    int status = 0;
    QApplication application(argc, argv);
    // The very last thing that it does is to wait for all answers of name servers, which may be silent.
    QObject::connect(&application, &QObject::destroyed, [&status] {
        std::fflush(nullptr);
        std::_Exit(status);
    });
    scale.restoreEnvironment();
    useUtf8();
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationVersion(loadCurrentVersion());
    QCoreApplication::setLibraryPaths({}); // no plug-ins but those that a window needs, which are loaded by now
    deleteOldLog();
    qInstallMessageHandler(debugFilter);
    preferBundledTools();
    applyLook(application);
    applyLanguage();

    const bool show = argc == 1 || (argc == 2 && !isOnlyArgument(argc, argv, "-hide"));
    const char *argument = show ? "" : "-hide";
    for (const char *only : {"-version", "-reset"}) {
        argument = isOnlyArgument(argc, argv, only) ? only : argument;
    }
    SingleInstance instance;
    status = run(instance, argument);
    return status;
}
