#include "tests/window/WindowFixture.h"

#include <QDesktopServices>
#include <QDir>

void WindowFixture::init()
{
    clear();
    QDir(appPath("/fake")).removeRecursively();
    // Nothing answers on port 1, so that every request of the start-up ends at once.
    putFile(appPath("/setting.ini"),
            "[LOGIN]\nVER=http://127.0.0.1:1/api\n[UPDATE]\nURL=http://127.0.0.1:1/update.xml\n");
    const QByteArray fake = appPath("/fake").toUtf8();
    putScript(appPath("/fake/netstat"), "echo 'default 198.51.100.1 UG eth0'");
    putScript(appPath("/fake/route"), "echo \"$*\" >> '" + fake + "/routes'; echo 'OK!'");
    putScript(appPath("/fake/defaults"),
              "[ $1 = read ] && echo 'does not exist' || printf %s \"$4\" > '" + fake + "/items'");
    qputenv("PATH", fake + ":/usr/bin:/bin");
    for (const char *scheme : {"http", "https"}) {
        QDesktopServices::setUrlHandler(scheme, this, "noteUrl");
    }
}

void WindowFixture::cleanup()
{
    QCOMPARE(boxes.takeFailures(), QString());
    QCOMPARE(boxes.left(), 0);
    end();
}

void WindowFixture::startLoggedIn(const QStringList &servers)
{
    for (const QString &server : servers) {
        putFile(appPath("/cfg/OpenVPN/") + server + ".ovpn", "client\nremote 203.0.113.21 1194\n");
    }
    putFile(appPath("/cfg/OpenVPN/alice.crt"), "            Not After : Dec 31 23:59:59 2099 GMT\n");
    start();
    button("cbNoSound")->setChecked(true);
    type("edUser", "alice");
    press("pbExist");
}
