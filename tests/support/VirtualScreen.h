#pragma once

#include <QProcess>

/// An X server without a screen (Xvfb) of the test's own with a window manager and a tray on it, and a person's hands
/// (xdotool).
class VirtualScreen
{
public:
    /// Starts it all; the test fails when the server does not come up.
    VirtualScreen();
    ~VirtualScreen();

    /// ":N", for DISPLAY.
    QString display() const { return m_display; }

    /// Whether a window with exactly this title is on the screen within the limit.
    bool showsWindow(const QString &title, int limitMs = 30000) const;

    /// Whether no such window is on the screen now.
    bool hidesWindow(const QString &title) const;

    /// Whether the window is minimised: off the screen, but known to the window manager.
    bool hasMinimised(const QString &title) const;

    /// Presses a key in the window with this title.
    void pressKey(const QString &title, const QString &key) const;

    /// Takes the tray away.
    void endTray();

private:
    void startOnScreen(QProcess &process, const QString &program, const QStringList &arguments) const;
    QByteArray output(const QString &program, const QStringList &arguments) const;
    QString windowOf(const QString &title) const;

    QProcess m_server;
    QProcess m_windowManager;
    QProcess m_tray;
    QString m_display;
};
