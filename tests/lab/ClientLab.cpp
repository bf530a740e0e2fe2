#include "tests/lab/ClientLab.h"

#include "common/AppPath.h"
#include "tests/support/Shell.h"

#include <cstdio>
#include <unistd.h>

/// The window may be a person's, and this process with it; it can become root.
static QString asRoot(const QString &command)
{
    if (geteuid() == 0) {
        return command;
    }
    return "exec setpriv --reuid=0 --regid=0 --clear-groups bash -c '" + QString(command).replace("'", "'\\''") +
           '\'';
}

QByteArray inHome(const QString &command, const QByteArray &input)
{
    return runShell("/", asRoot(command), input).trimmed();
}

/// All that a connection may change: routes, rules, packet filter, name servers, links.
static QByteArray networkState()
{
    return inHome("ip route; ip -6 route | grep -v ' expires '; ip rule; ip route show table 19311 2>/dev/null; "
                  "nft list ruleset; cat /etc/resolv.conf; ls /sys/class/net; ls -A /run/korvan 2>/dev/null | "
                  "grep -vE '^(last-remote|.*lock)$'");
}

ClientLab::ClientLab() : m_network(networkState())
{
    if (!qEnvironmentVariableIsSet("LAB_CONTROL")) {
        qFatal("it runs in a lab only: lab/lab run -- %s", qPrintable(QCoreApplication::applicationFilePath()));
    }
    prepareApplication(*qApp);
    static const QByteArray systemPath = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(appPath("/tools")) + ':' + systemPath);
    inHome("cp -au '" KORVAN_BUNDLE "'/. '" + appPath("/") + "'");
    clear(); // the state of the bundle's own runs
    QCoreApplication::setApplicationVersion(QString::fromUtf8(fileBytes(appPath("/version"))));
    reset();
}

ClientLab::~ClientLab()
{
    end();
    reset(); // also ends what still stalls
    QCOMPARE(boxes.takeFailures(), QString());
    QCOMPARE(boxes.left(), 0);
    QVERIFY(networkIsAsBefore());
}

void ClientLab::login(const QString &user, const QString &password) const
{
    find<QLineEdit>("edUser")->setText(user);
    find<QLineEdit>("edPass")->setText(password);
    QVERIFY(press("pbLogin"));
}

void ClientLab::logInTo(const QString &server) const
{
    tick("cbNoSound");
    login();
    find<QComboBox>("cmServer")->setCurrentText(server);
    QCOMPARE(find<QComboBox>("cmServer")->currentText(), server);
}

void ClientLab::tick(const char *box, bool on) const
{
    auto *widget = find<QAbstractButton>(box);
    if (widget->isChecked() != on) {
        widget->click();
    }
}

bool ClientLab::breakTunnel()
{
    find<QAbstractButton>("cbAutoReconn")->setChecked(false);
    expectKillSwitch();
    kill(openVPN(), SIGTERM);
    return QTest::qWaitFor([this] { return boxes.left() == 0; }, 60000) && isDisconnected();
}

bool ClientLab::networkIsAsBefore() const
{
    if (QTest::qWaitFor([this] { return networkState() == m_network; }, 60000)) {
        return true;
    }
    std::printf("the network is now\n%s\nand was\n%s\n", networkState().constData(), m_network.constData());
    return false;
}

QByteArray whereabouts(const QString &curlOptions)
{
    return inHome(
        "curl -s -m 2 " + curlOptions +
        " http://ip.korvan.example/testip.php | sed -n 's/.*in \\(.*\\)? .*: \\([0-9a-f.:]*\\)<.*/\\2, \\1/p'");
}

pid_t openVPN()
{
    // The servers' machines have network namespaces of their own.
    return inHome("for p in $(pgrep -x openvpn); do [ /proc/$p/ns/net -ef /proc/self/ns/net ] && echo $p; done")
        .toInt();
}
