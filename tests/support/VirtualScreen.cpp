#include "tests/support/VirtualScreen.h"

#include <QRegularExpression>
#include <QTest>

VirtualScreen::VirtualScreen()
{
    // A server that resets after its first client would cut off the next one.
    m_server.start("Xvfb", {"-noreset", "-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp"});
    if (!m_server.waitForStarted() || !m_server.waitForReadyRead(30000)) {
        qFatal("Xvfb does not start");
    }
    m_display = ":" + QString::fromLatin1(m_server.readAllStandardOutput().trimmed());
    startOnScreen(m_windowManager, "openbox", {"--sm-disable"});
    startOnScreen(m_tray, "trayer", {"--edge", "bottom", "--width", "10"});
    if (!QTest::qWaitFor([this] { return !output("xdotool", {"search", "--class", "trayer"}).isEmpty(); }, 30000)) {
        qFatal("the tray does not start");
    }
}

VirtualScreen::~VirtualScreen()
{
    for (QProcess *process : {&m_tray, &m_windowManager, &m_server}) {
        process->terminate();
        process->waitForFinished();
    }
}

void VirtualScreen::endTray()
{
    m_tray.terminate();
    m_tray.waitForFinished();
}

void VirtualScreen::startOnScreen(QProcess &process, const QString &program, const QStringList &arguments) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", m_display);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
}

QByteArray VirtualScreen::output(const QString &program, const QStringList &arguments) const
{
    QProcess process;
    startOnScreen(process, program, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput().trimmed();
}

QString VirtualScreen::windowOf(const QString &title) const
{
    const QString name = "^" + QRegularExpression::escape(title) + "$";
    return QString::fromLatin1(output("xdotool", {"search", "--onlyvisible", "--name", name}).split('\n').first());
}

bool VirtualScreen::showsWindow(const QString &title, int limitMs) const
{
    return QTest::qWaitFor([&] { return !hidesWindow(title); }, limitMs);
}

bool VirtualScreen::hidesWindow(const QString &title) const
{
    return windowOf(title).isEmpty();
}

bool VirtualScreen::hasMinimised(const QString &title) const
{
    return output("xwininfo", {"-name", title, "-wm"}).contains("Hidden");
}

void VirtualScreen::pressKey(const QString &title, const QString &key) const
{
    output("xdotool", {"windowfocus", "--sync", windowOf(title), "key", key});
}
