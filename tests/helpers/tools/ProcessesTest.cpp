#include "tests/support/NetworkScript.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

/// The tools ping and defaults, with a ping and users of their own.
class ProcessesTest : public QObject
{
    Q_OBJECT

private slots:
    void pingSummary_data();
    void pingSummary();
    void pingEndsWithItsCaller();
    void loginItemsOfTheRealUser_data();
    void loginItemsOfTheRealUser();
    void loginItemsThroughAPlantedLink();
};

namespace {

QByteArray run(const QByteArray &script)
{
    return runNetworkScript("PATH=" KORVAN_BUNDLE "/tools:$PATH\n" + script).trimmed();
}

/// Puts a script of this body where the real ping is.
QByteArray withPing(const QByteArray &body)
{
    return "cat >/run/ping <<'END'\n#!/bin/bash\n" + body + "\nEND\nchmod 755 /run/ping\n" +
           "mount --bind /run/ping /usr/bin/ping\n";
}

/// A user "ada" with a home folder of her own, and short names for the two commands.
constexpr char kUsers[] = R"sh(
cp /etc/passwd /run/passwd
echo 'ada:x:4711:4711::/run/ada:/bin/sh' >>/run/passwd
mount --bind /run/passwd /etc/passwd
mkdir /run/ada; chown 4711:4711 /run/ada
key="loginwindow AutoLaunchedApplicationDictionary"
korvan='{Hide = 0; Path = "/opt/Korvan.app";}'
)sh";

} // namespace

void ProcessesTest::pingSummary_data()
{
    QTest::addColumn<QByteArray>("printed");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("answers") << QByteArray("1 packets transmitted, 1 received, 0% packet loss, time 0ms\n"
                                           "rtt min/avg/max/mdev = 10.9/23.7/40.1/5.2 ms")
                             << QByteArray("1 packets transmitted, 1 received, 0% packet loss, time 0ms\n"
                                           "rtt min/avg/max/stddev = 10.9/23.7/40.1/5.2 ms");
    QTest::newRow("errors are counted")
        << QByteArray("4 packets transmitted, 1 received, +1 duplicates, +3 errors, 75% packet loss, time 3ms")
        << QByteArray("4 packets transmitted, 1 received, 75% packet loss, time 3ms");
    QTest::newRow("silence, no line end") << QByteArray("1 packets transmitted, 0 received, 100% packet loss")
                                          << QByteArray("1 packets transmitted, 0 received, 100% packet loss");
}

void ProcessesTest::pingSummary()
{
    QFETCH(QByteArray, printed);
    QFETCH(QByteArray, expected);
    QCOMPARE(
        run(withPing("echo $LC_ALL $LD_PRELOAD \"$@\"\nprintf %s '" + printed + "'\nexit 7") +
            "LD_PRELOAD=/nowhere.so ping -c20 vpn.example 2>/dev/null; echo \" status $?\"; ping -c1 -f; echo $?"),
        "C -c20 -- vpn.example\n" + expected + " status 7\nping: use ping -cCOUNT HOST\n2");
}

void ProcessesTest::pingEndsWithItsCaller()
{
    QCOMPARE(run(withPing("echo $$ >/run/pid; sleep 50 & wait") + R"sh(
        ping -c20 vpn.example & tool=$!
        until [[ -s /run/pid ]]; do sleep 0.01; done
        kill -9 $tool
        while kill -0 "$(</run/pid)" 2>/dev/null; do sleep 0.01; done
        echo ended)sh")
                 .endsWith("ended"),
             true);
}

void ProcessesTest::loginItemsOfTheRealUser_data()
{
    QTest::addColumn<QByteArray>("as");
    QTest::newRow("ordinary user") << QByteArray("setpriv --reuid 4711 --regid 4711 --clear-groups");
    QTest::newRow("set-user-id") << QByteArray("setpriv --ruid 4711 --clear-groups env USER=root");
    QTest::newRow("root for a user") << QByteArray("env USER=ada");
    QTest::newRow("sudo") << QByteArray("env USER=root SUDO_UID=4711");
}

void ProcessesTest::loginItemsOfTheRealUser()
{
    QFETCH(QByteArray, as);
    const QByteArray output = run(kUsers + ("d() { " + as) + R"sh( $(command -v defaults) "$@"; }
        d read $key | grep -o 'not exist'
        mkdir -p /run/ada/.config/autostart
        echo "[Desktop Entry]" >/run/ada/.config/autostart/korvan-own.desktop
        chown -R 4711:4711 /run/ada
        d write $key "({Hide = 0; Path = \"/a\"b/Korvan.app\";},$korvan,$korvan)"
        d read $key
        find /run/ada -type f ! -user 4711
        cd /run/ada/.config/autostart; ls | wc -l; grep -h Exec *
        d write $key '()'; d read $key; ls)sh");
    QCOMPARE(output, QByteArray("not exist\n"
                                "defaults: can not understand an entry of the list after: {Hide = 0; Path = \"/a\"\n"
                                "({Hide = 0; Path = \"/a\"b/Korvan.app\";},{Hide = 0; Path = \"/opt/Korvan.app\";},"
                                "{Hide = 0; Path = \"/opt/Korvan.app\";})\n"
                                "2\nExec=\"/opt/Korvan.app/Contents/MacOS/Korvan\" -hide\n"
                                "()\nkorvan-own.desktop"));
}

void ProcessesTest::loginItemsThroughAPlantedLink()
{
    const QByteArray output = run(QByteArray(kUsers) + R"sh(
        mkdir -m 700 /run/secret; echo secret >/run/secret/login-items
        mkdir /run/ada/.config; ln -s /run/secret /run/ada/.config/korvan; ln -s /run/secret /run/ada/.config/autostart
        USER=ada defaults read $key | grep -o 'not exist'
        USER=ada defaults write $key "($korvan)" 2>&1 | grep -o 'Permission denied'
        ls /run/secret; cat /run/secret/login-items)sh");
    QCOMPARE(output, QByteArray("not exist\nPermission denied\nPermission denied\nlogin-items\nsecret"));
}

int main(int argc, char **argv)
{
    if (!canUseLab()) {
        return 0;
    }
    QCoreApplication application(argc, argv);
    ProcessesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ProcessesTest.moc"
