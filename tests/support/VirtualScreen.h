#pragma once

#include <QProcess>
#include <QTest>

/// An X server without a screen (Xvfb) of the test's own with a window manager and a tray on it, and a person's hands
/// (xdotool).
class VirtualScreen
{
public:
    /// Starts it all; the test fails when the server does not come up.
    VirtualScreen()
    {
        // A server that resets after its first client would cut off the next one.
        m_server.start("Xvfb", {"-noreset", "-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp"});
        if (!m_server.waitForStarted() || !m_server.waitForReadyRead(30000)) {
            qFatal("Xvfb does not start");
        }
        m_display = ":" + QString::fromLatin1(m_server.readAllStandardOutput().trimmed());
        start(m_windowManager, "openbox --sm-disable");
        start(m_tray, "trayer --edge bottom --width 10");
        if (!QTest::qWaitFor([this] { return !output("xdotool search --class trayer").isEmpty(); }, 30000)) {
            qFatal("the tray does not start");
        }
    }

    ~VirtualScreen()
    {
        for (QProcess *process : {&m_tray, &m_windowManager, &m_server}) {
            process->terminate();
            process->waitForFinished();
        }
    }

    /// ":N", for DISPLAY.
    QString display() const { return m_display; }

    /// Whether a window with exactly this title, a word, comes to be on the screen, or is not there now.
    bool showsWindow(const QString &title) const
    {
        return QTest::qWaitFor([&] { return !hidesWindow(title); }, 30000);
    }
    bool hidesWindow(const QString &title) const { return windowOf(title).isEmpty(); }

    /// Whether the window is minimised: off the screen, but known to the window manager.
    bool hasMinimised(const QString &title) const { return output("xwininfo -wm -name " + title).contains("Hidden"); }

    /// Presses a key in the window with this title.
    void pressKey(const QString &title, const QString &key) const
    {
        output("xdotool windowfocus --sync " + windowOf(title) + " key " + key);
    }

    /// Takes the tray away.
    void endTray()
    {
        m_tray.terminate();
        m_tray.waitForFinished();
    }

private:
    void start(QProcess &process, const QString &command) const
    {
        process.start("env", ("DISPLAY=" + m_display + ' ' + command).split(' '));
    }

    QByteArray output(const QString &command) const
    {
        QProcess process;
        start(process, command);
        process.waitForFinished();
        return process.readAllStandardOutput().trimmed();
    }

    QString windowOf(const QString &title) const
    {
        return QString::fromLatin1(output("xdotool search --onlyvisible --name ^" + title + '$').split('\n').first());
    }

    QProcess m_server, m_windowManager, m_tray;
    QString m_display;
};
