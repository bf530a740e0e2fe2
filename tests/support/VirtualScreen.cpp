#include "tests/support/VirtualScreen.h"

#include <QRegularExpression>
#include <QTest>

VirtualScreen::VirtualScreen()
{
    m_server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp"});
    if (!m_server.waitForStarted() || !m_server.waitForReadyRead(30000)) {
        qFatal("Xvfb does not start");
    }
    m_display = ":" + QString::fromLatin1(m_server.readAllStandardOutput().trimmed());
    startOnScreen(m_windowManager, "openbox", {"--sm-disable"});
    startOnScreen(m_tray, "trayer", {"--edge", "bottom", "--width", "10"});
    if (!QTest::qWaitFor([this] { return !xdotool({"search", "--class", "trayer"}).isEmpty(); }, 30000)) {
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

QByteArray VirtualScreen::xdotool(const QStringList &arguments) const
{
    QProcess process;
    startOnScreen(process, "xdotool", arguments);
    process.waitForFinished();
    return process.readAllStandardOutput().trimmed();
}

static QStringList searchFor(const QString &title)
{
    return {"search", "--onlyvisible", "--name", "^" + QRegularExpression::escape(title) + "$"};
}

bool VirtualScreen::showsWindow(const QString &title, int limitMs) const
{
    return QTest::qWaitFor([&] { return !hidesWindow(title); }, limitMs);
}

bool VirtualScreen::hidesWindow(const QString &title) const
{
    return xdotool(searchFor(title)).isEmpty();
}

bool VirtualScreen::hasMinimised(const QString &title) const
{
    QProcess list;
    startOnScreen(list, "xwininfo", {"-name", title, "-wm"});
    list.waitForFinished();
    return list.readAllStandardOutput().contains("Hidden");
}

void VirtualScreen::pressKey(const QString &title, const QString &key) const
{
    const QByteArray window = xdotool(searchFor(title)).split('\n').first();
    xdotool({"windowfocus", "--sync", QString::fromLatin1(window), "key", key});
}
