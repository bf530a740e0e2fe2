#include "tests/window/WindowFixture.h"

#include "common/AppPath.h"
#include "tests/support/TestFiles.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>

WindowFixture::WindowFixture()
{
    QDir(appPath("/fake")).removeRecursively();
    QFile::remove(appPath("/routes"));
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

void WindowFixture::putProfile(const QStringList &servers)
{
    for (const QString &server : servers) {
        putFile(appPath("/cfg/OpenVPN/") + server + ".ovpn", "client\nremote 203.0.113.21 1194\n");
    }
    putFile(appPath("/cfg/OpenVPN/alice.crt"), "            Not After : Dec 31 23:59:59 2099 GMT\n");
}

Korvan &WindowFixture::startLoggedIn(const QStringList &servers)
{
    putProfile(servers);
    Korvan &window = start();
    find<QCheckBox>("cbNoSound")->setChecked(true);
    find<QLineEdit>("edUser")->setText("alice");
    window.updateOpenVPNServerList();
    window.setStatus(STATUS_READY);
    takeRoutes();
    return window;
}

VPNClient &WindowFixture::engine() const
{
    return *m_window->m_engine;
}

QByteArray WindowFixture::takeRoutes()
{
    QByteArray routes = fileBytes(appPath("/routes"));
    QFile::remove(appPath("/routes"));
    return routes;
}
