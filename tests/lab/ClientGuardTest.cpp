#include "tests/lab/ClientLab.h"

#include <csignal>
#include <cstdio>

/// What keeps the subscriber's packets in the tunnel: the kill switch, the reconnection and lock-down, seen from the
/// routing table, from other programs of his and from the world.
class ClientGuardTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void killSwitch();
    void reconnectsByItself();
    void restartOfOpenVPNLeaksNothing_data();
    void restartOfOpenVPNLeaksNothing();
    void lockDownKeepsEveryPacketIn_data();
    void lockDownKeepsEveryPacketIn();
    void lockDownEndsWhenSwitchedOff();
    void lockDownSparesProxiedServers();

private:
    void connectTo(const QString &server, bool lockDown);
    bool reconnects(const std::function<void()> &breakTunnel);
    static bool isCutOff();

    std::unique_ptr<ClientLab> m_client;
    QByteArray m_network;
};

void ClientGuardTest::init()
{
    m_network = networkState();
    m_client = std::make_unique<ClientLab>();
}

void ClientGuardTest::cleanup()
{
    QCOMPARE(m_client->boxes.takeFailures(), QString());
    QCOMPARE(m_client->boxes.left(), 0);
    m_client.reset();
    QVERIFY(networkReturnsTo(m_network));
}

void ClientGuardTest::connectTo(const QString &server, bool lockDown)
{
    m_client->startLoggedIn(server);
    m_client->tick("cbLockDown", lockDown);
    QVERIFY(m_client->press("pbConnect"));
    QVERIFY(m_client->isConnected());
}

/// Whether the tunnel comes up anew after it was broken.
bool ClientGuardTest::reconnects(const std::function<void()> &breakTunnel)
{
    const pid_t before = openVPN();
    breakTunnel();
    const auto isNew = [before] {
        const pid_t now = openVPN();
        return now != 0 && now != before;
    };
    return QTest::qWaitFor(isNew, 60000) && m_client->isConnected();
}

/// Whether other programs reach nobody outside, with IPv4 or IPv6.
bool ClientGuardTest::isCutOff()
{
    return inHome("ip route show default").isEmpty() && whereabouts().isEmpty() &&
           inHome("curl -s -m 1 http://[2001:db8:113::10]/testip.php").isEmpty();
}

void ClientGuardTest::killSwitch()
{
    connectTo("Examplia-1", false);
    bool cutOff = false;
    int before = 0;
    int after = 0;
    m_client->expectKillSwitch();
    m_client->boxes.whileOpen = [&] {
        before = LeakWatch::packets();
        cutOff = isCutOff();
        after = LeakWatch::packets();
    };
    const LeakWatch watch;
    kill(openVPN(), SIGKILL);
    QTRY_COMPARE_WITH_TIMEOUT(m_client->boxes.left(), 0, 60000);
    std::printf("%d packets left the machine before the kill switch acted\n", before);
    QVERIFY(cutOff);
    QCOMPARE(after, before);
    QVERIFY(m_client->isDisconnected());
    QVERIFY(networkReturnsTo(m_network));
    QVERIFY(m_client->shows("lbCountry", "Homeland"));
}

void ClientGuardTest::reconnectsByItself()
{
    connectTo("Examplia-1", false);
    m_client->find<QAbstractButton>("cbAutoReconn")->setChecked(true);
    QVERIFY(reconnects([] { kill(openVPN(), SIGKILL); }));
    QVERIFY(m_client->shows("lbCountry", "Examplia"));
    QVERIFY(inHome("ip route show default").contains("198.51.100.1"));
    QVERIFY(m_client->breakTunnel());
}

/// OpenVPN then starts anew in itself, and nobody is told.
void ClientGuardTest::restartOfOpenVPNLeaksNothing_data()
{
    QTest::addColumn<bool>("lockDown");
    QTest::newRow("") << false;
    QTest::newRow("in lock-down") << true;
}

void ClientGuardTest::restartOfOpenVPNLeaksNothing()
{
    QFETCH(bool, lockDown);
    connectTo("Examplia-1-TCP", lockDown);
    const pid_t before = openVPN();
    const LeakWatch watch;
    inHome("$LAB ctl stop Examplia-1-TCP; $LAB ctl start Examplia-1-TCP");
    QTRY_COMPARE_WITH_TIMEOUT(whereabouts(), QByteArray("198.18.11.2, Examplia"), 60000);
    QCOMPARE(openVPN(), before);
    QCOMPARE(LeakWatch::packets(), 0);
    QCOMPARE(m_client->label("lbStatusT"), QString(" CONNECTED"));
    QVERIFY(m_client->breakTunnel());
}

void ClientGuardTest::lockDownKeepsEveryPacketIn_data()
{
    QTest::addColumn<bool>("byUser");
    QTest::newRow("OpenVPN is killed") << false;
    QTest::newRow("the user asks") << true;
}

void ClientGuardTest::lockDownKeepsEveryPacketIn()
{
    QFETCH(bool, byUser);
    connectTo("Examplia-1", true);
    m_client->find<QAbstractButton>("cbAutoReconn")->setChecked(true);
    QCOMPARE(inHome("ip route show default"), QByteArray());
    QCOMPARE(whereabouts(), QByteArray("198.18.1.2, Examplia"));

    const LeakWatch watch;
    QVERIFY(reconnects([&] { byUser ? void(m_client->press("pbReconnect")) : void(kill(openVPN(), SIGKILL)); }));
    QCOMPARE(whereabouts(), QByteArray("198.18.1.2, Examplia"));
    QCOMPARE(LeakWatch::packets(), 0);
    if (byUser) {
        QVERIFY(m_client->press("pbDisconnect"));
        QVERIFY(m_client->isDisconnected());
    } else {
        QVERIFY(m_client->breakTunnel());
    }
    QVERIFY2(QTest::qWaitFor([] { return LeakWatch::packets() > 0; }, 10000), "the watch does see packets");
}

void ClientGuardTest::lockDownEndsWhenSwitchedOff()
{
    connectTo("Examplia-1", true);
    QCOMPARE(inHome("ip route show default"), QByteArray());
    m_client->openPage("Settings");
    m_client->tick("cbLockDown", false);
    QVERIFY(m_client->press("pbSave"));
    QVERIFY(inHome("ip route show default").contains("198.51.100.1"));
    QCOMPARE(whereabouts(), QByteArray("198.18.1.2, Examplia"));
    QVERIFY(m_client->breakTunnel());
}

void ClientGuardTest::lockDownSparesProxiedServers()
{
    connectTo("Proxied-Samplonia", true);
    QVERIFY(inHome("ip route show default").contains("198.51.100.1"));
    QCOMPARE(whereabouts(), QByteArray("198.51.100.2, Homeland"));
    QCOMPARE(whereabouts("--socks5-hostname 198.18.4.1:1080"), QByteArray("203.0.113.24, Samplonia"));
    QVERIFY(m_client->press("pbDisconnect"));
    QVERIFY(m_client->isDisconnected());
    QVERIFY(inHome("ip route show default").contains("198.51.100.1"));
}

int main(int argc, char *argv[])
{
    return runLabTest<ClientGuardTest>(argc, argv);
}
#include "ClientGuardTest.moc"
