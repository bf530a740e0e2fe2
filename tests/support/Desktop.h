#pragma once

#include "tests/support/Shell.h"

#include <QTest>

/// A person's eyes and hands (xdotool) on the screen that scripts/with-screen.sh has made.
namespace desktop {

inline QByteArray windowOf(const QString &title)
{
    return runShell("/", "xdotool search --onlyvisible --name '^" + title + "$'").split('\n').first();
}

/// Whether a window with exactly this title, a word, comes to be on the screen, or is not there now.
inline bool hidesWindow(const QString &title)
{
    return windowOf(title).isEmpty();
}
inline bool showsWindow(const QString &title)
{
    return QTest::qWaitFor([&] { return !hidesWindow(title); }, 30000);
}

/// Whether the window is minimised: off the screen, but known to the window manager.
inline bool hasMinimised(const QString &title)
{
    return runShell("/", "xwininfo -wm -name " + title).contains("Hidden");
}

/// Presses a key in the window with this title.
inline void pressKey(const QString &title, const QString &key)
{
    runShell("/", "xdotool windowfocus --sync " + windowOf(title) + " key " + key);
}

/// Takes the tray away.
inline void endTray()
{
    runShell("/", "kill $SCREEN_TRAY; while kill -0 $SCREEN_TRAY; do sleep 0.01; done 2>/dev/null");
}

} // namespace desktop
