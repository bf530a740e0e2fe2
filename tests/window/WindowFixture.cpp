#include "tests/window/WindowFixture.h"

#include "app/shell/DebugLog.h"
#include "common/AppPath.h"
#include "tests/support/TestFiles.h"
#include "ui/Look.h"

#include <QDir>
#include <QTextCodec>

void prepareApplication(QApplication &application)
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QApplication::setQuitOnLastWindowClosed(false);
    applyLook(application);
}

WindowFixture::WindowFixture()
{
    qInstallMessageHandler(debugFilter); // the test runner has put its own in place
    for (const char *state : {"/cfg", "/l2tp", "/defgate", "/log.txt", "/routes", "/fake", "/update"}) {
        QDir(appPath(state)).removeRecursively();
        QFile::remove(appPath(state));
    }
    // Nothing answers on port 1, so that every request of the start-up ends at once.
    putFile(appPath("/setting.ini"),
            "[LOGIN]\nVER=http://127.0.0.1:1/api\n[UPDATE]\nURL=http://127.0.0.1:1/update.xml\n");
    putScript(appPath("/fake/netstat"), "echo 'default 198.51.100.1 UG eth0'");
    putScript(appPath("/fake/route"), "echo \"$*\" >> '" + appPath("/routes").toUtf8() + "'; echo 'OK!'");
    putScript(appPath("/fake/defaults"), "echo 'does not exist'");
    putScript(appPath("/down.sh"), "");
    putScript(appPath("/up.sh"), "");
    qputenv("PATH", QFile::encodeName(appPath("/fake")) + ":/usr/bin:/bin");
}

Korvan &WindowFixture::start()
{
    m_window = std::make_unique<Korvan>();
    m_window->show();
    // The update check is the last step of the start; it leaves this line when nothing answers.
    if (!QTest::qWaitFor([] { return fileBytes(appPath("/log.txt")).contains("[WARNING]Can not load from"); },
                         30000)) {
        qFatal("the start did not end");
    }
    return *m_window;
}

void WindowFixture::putProfile(const QStringList &servers)
{
    for (const QString &server : servers) {
        putFile(appPath("/cfg/OpenVPN/") + server + ".ovpn", "client\nremote 203.0.113.21 1194\n");
    }
    putFile(appPath("/cfg/OpenVPN/alice.crt"), "            Not After : Dec 31 23:59:59 2099 GMT\n");
}

VPNClient &WindowFixture::engine() const
{
    return *m_window->m_engine;
}

bool WindowFixture::press(const char *button) const
{
    auto *widget = find<QAbstractButton>(button);
    if (!widget->isVisibleTo(m_window.get()) || !widget->isEnabled()) {
        return false;
    }
    widget->click();
    return true;
}

QByteArray WindowFixture::takeRoutes()
{
    const QByteArray routes = fileBytes(appPath("/routes"));
    QFile::remove(appPath("/routes"));
    return routes;
}
