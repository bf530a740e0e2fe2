#include "common/AppPath.h"
#include "platform/Tool.h"
#include "tests/support/TestFiles.h"
#include "tests/vpn/TestClient.h"

#include <QDir>
#include <QTest>

static QString run(const QString &command)
{
    const ToolResult result = runTool("bash", {"-c", command}, 60000);
    return QString::fromUtf8(result.output + result.errors);
}

static bool openTo(TestClient &client, const QString &server, const QString &user = {}, const QString &password = {})
{
    const QString folder = appPath("/cfg/OpenVPN/");
    QFile::remove(folder + "temp");
    QFile::copy(folder + server + ".ovpn", folder + "temp");
    return client.openWith(VPNClient::OPENVPN, "/cfg/OpenVPN/temp", user, password, "|--cd|" + folder);
}

/// All that a tunnel changes on the machine.
static QString network()
{
    return run("ip route; ip rule; ip -6 route | grep -v fe80; nft list ruleset; cat /etc/resolv.conf");
}

/// The engine and the shipped helpers against real OpenVPN servers. It runs in a lab.
class TunnelTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const QString helper : {"/compose", "/network", "/up.sh", "/down.sh"}) {
            QFile::remove(appPath(helper));
            QVERIFY(QFile::copy(KORVAN_BUNDLE + helper, appPath(helper)));
        }
        QDir().mkpath(appPath("/cfg"));
        run("cp -rT \"$LAB_PROFILES\" '" + appPath("/cfg/OpenVPN") + "'");
        m_before = network();
    }

    void cleanup() { QTRY_COMPARE_WITH_TIMEOUT(network(), m_before, 20000); }

    /// The server refuses them until it knows them, takes them as they were typed, and nobody else sees them.
    void promptedCredentials()
    {
        const QString user = "a-name-like-no-other";
        const QString password = "pass \"wörd\" like\\no other";
        TestClient client;
        QVERIFY(!openTo(client, "Password-1", user, password));
        QTRY_COMPARE(client.errors(), QStringList("[ERROR]username or password is not matched."));
        run("echo '" + user + '\t' + password + "' >> $LAB_DIR/users");
        QVERIFY2(openTo(client, "Password-1", user, password), qPrintable(client.messages.join('\n')));
        const QString seen =
            client.messages.join('\n') + run("cat /proc/[0-9]*/cmdline 2>/dev/null | tr '\\0' '\\n'");
        QVERIFY(seen.contains("--auth-user-pass") && !seen.contains(user) && !seen.contains(password));
        QCOMPARE(run("grep -srlaF -e 'like-no-other' -e 'like\\no other' /run /etc /dev/shm /tmp/openvpn* '" +
                     appPath("/cfg") + "' | grep -v /run/lab/"),
                 QString());
        QVERIFY(client.close());
    }

    /// A server whose certificate bears the marker as its name, and which then says nothing.
    void forgedMarker()
    {
        run("bash " KORVAN_SOURCE "/tests/vpn/forged-server.sh '" + appPath("/cfg/OpenVPN") + "'");
        TestClient client;
        client.m_timeout = 8000;
        QVERIFY(!openTo(client, "Forged-1"));
        const QString messages = client.messages.join('\n');
        QVERIFY2(messages.contains("VERIFY OK: depth=0, CN=Initialization Sequence Completed"), qPrintable(messages));
        QVERIFY2(!client.states.contains("3"), qPrintable(messages));
        QVERIFY(client.close());
    }

private:
    QString m_before;
};

int main(int argc, char **argv)
{
    qputenv("LC_ALL", "C.UTF-8");
    QCoreApplication application(argc, argv);
    TunnelTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "TunnelTest.moc"
