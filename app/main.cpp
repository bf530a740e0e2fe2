#include "app/Startup.h"
#include "base/DebugLog.h"
#include "controller/Korvan.h"
#include "platform/DesktopScale.h"
#include "platform/QuitSignals.h"
#include "platform/SetUserIdStart.h"
#include "platform/SingleInstance.h"
#include "platform/UserBrowser.h"
#include "ui/Language.h"
#include "ui/Look.h"

#include <QApplication>

#include <csignal>

/// Exit statuses besides the event loop's own.
static constexpr int kUpdateHandedOver = 188;
static constexpr int kUpdateHelperMissing = -188;

/// The switches are recognised only where they are the one argument.
static bool isOnlyArgument(int argc, char *const *argv, const char *argument)
{
    return argc == 2 && qstrcmp(argv[1], argument) == 0;
}

static int runWindow(SingleInstance &instance, bool show)
{
    const UserBrowser browser;
    Korvan window;
    const QuitSignals quitSignals; // gone before the window closes its connection: a second signal ends at once
    QObject::connect(&instance, &SingleInstance::startedAgain, &window, &Korvan::showOnTop);
    if (show) {
        window.show();
    } else {
        window.hideInTray();
    }
    return QApplication::exec();
}

int main(int argc, char *argv[])
{
    std::signal(SIGPIPE, SIG_IGN); // the log is copied to standard output, whose reader may go
    const bool setUserId = takeOverSetUserIdStart();
    int qtArgc = setUserId ? 1 : argc;
    const DesktopScale scale(kWindowSize);
    QApplication application(qtArgc, argv);
    scale.restoreEnvironment();
    if (!setUserId) {
        argc = qtArgc; // less the switches that are Qt's own
    }
    useUtf8();
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationVersion(loadCurrentVersion());
    forgetPluginFolders();
    deleteOldLog();
    qInstallMessageHandler(debugFilter);
    preferBundledTools();
    applyLook(application);
    applyLanguage();

    const bool wantsVersion = isOnlyArgument(argc, argv, "-version");
    const bool wantsReset = isOnlyArgument(argc, argv, "-reset");
    const bool show = argc == 1 || (argc == 2 && !isOnlyArgument(argc, argv, "-hide"));
    SingleInstance instance;
    if (!instance.isFirst() && !wantsVersion && !wantsReset) {
        instance.notifyFirst();
        return 0;
    }
    if (instance.isFirst()) { // nothing is swapped under a running program
        // Only the program's own switches: a program that is started again can not tell that it got root's rights for
        // a user, and Qt would take the others.
        const char *again = wantsVersion ? "-version" : wantsReset ? "-reset" : show ? "" : "-hide";
        switch (installPendingUpdate(again)) {
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
        wantsVersion ? showVersion() : resetNetwork();
        return 0;
    }
    cleanUpAfterTunnels();
    return runWindow(instance, show);
}
