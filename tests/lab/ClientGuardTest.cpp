#include "tests/lab/ClientLab.h"

static void connectTo(ClientLab &client, const QString &server, bool lockDown)
{
    client.startLoggedIn(server);
    client.tick("cbLockDown", lockDown);
    QVERIFY(client.connects());
}

/// Whether the tunnel comes up anew after it was broken.
static bool reconnects(const ClientLab &client, const std::function<void()> &breakTunnel)
{
    const pid_t before = openVPN();
    breakTunnel();
    const auto isNew = [before] {
        const pid_t now = openVPN();
        return now != 0 && now != before;
    };
    return QTest::qWaitFor(isNew, 60000) && client.isConnected();
}

static void killOpenVPN()
{
    kill(openVPN(), SIGKILL);
}

/// What keeps the subscriber's packets in the tunnel: the kill switch, the reconnection and lock-down, seen from the
/// routing table, from other programs of his and from the world.
class ClientGuardTest : public QObject
{
    Q_OBJECT

private slots:
    /// A tunnel that breaks cuts other programs off until the user has been told, or comes up anew if he wants that.
    void killSwitchOrReconnection()
    {
        ClientLab client;
        connectTo(client, "Examplia-1", false);
        bool cutOff = false;
        client.expectKillSwitch();
        client.boxes.whileOpen = [&] { cutOff = !hasDefaultRoute() && whereabouts().isEmpty() && !ipv6IsOpen(); };
        killOpenVPN();
        QTRY_COMPARE_WITH_TIMEOUT(client.boxes.left(), 0, 60000);
        client.boxes.whileOpen = nullptr;
        QVERIFY(cutOff);
        QVERIFY(client.isDisconnected() && client.networkIsAsBefore() && client.shows("lbCountry", "Homeland"));

        QVERIFY(client.connects());
        client.find<QAbstractButton>("cbAutoReconn")->setChecked(true);
        QVERIFY(reconnects(client, killOpenVPN));
        QVERIFY(client.shows("lbCountry", "Examplia") && hasDefaultRoute());
        QVERIFY(client.breakTunnel());
    }

    /// OpenVPN then starts anew in itself, and nobody is told.
    void restartOfOpenVPNLeaksNothing()
    {
        ClientLab client;
        for (const bool lockDown : {false, true}) {
            connectTo(client, "Examplia-1-TCP", lockDown);
            const pid_t before = openVPN();
            const LeakWatch watch;
            inHome("$LAB ctl stop Examplia-1-TCP; $LAB ctl start Examplia-1-TCP");
            QTRY_COMPARE_WITH_TIMEOUT(whereabouts(), QByteArray("198.18.11.2, Examplia"), 60000);
            QCOMPARE(openVPN(), before);
            QCOMPARE(LeakWatch::packets(), 0);
            QCOMPARE(client.label("lbStatusT"), QString(" CONNECTED"));
            QVERIFY(client.breakTunnel());
        }
    }

    /// Also while the tunnel is down between two attempts, until the user switches lock-down off or disconnects.
    void lockDownKeepsEveryPacketIn()
    {
        ClientLab client;
        connectTo(client, "Examplia-1", true);
        client.find<QAbstractButton>("cbAutoReconn")->setChecked(true);
        const LeakWatch watch;
        QVERIFY(reconnects(client, killOpenVPN));
        QVERIFY(reconnects(client, [&client] { client.press("pbReconnect"); }));
        QVERIFY(!hasDefaultRoute());
        QCOMPARE(whereabouts(), QByteArray("198.18.1.2, Examplia"));
        QCOMPARE(LeakWatch::packets(), 0);
        QVERIFY(client.disconnects());
        QVERIFY2(QTest::qWaitFor([] { return LeakWatch::packets() > 0; }, 10000), "the watch does see packets");
        QVERIFY(client.connects() && !hasDefaultRoute());
        client.tick("cbLockDown", false);
        QVERIFY(client.press("pbSave") && hasDefaultRoute());
        QVERIFY(client.breakTunnel());
    }

    void lockDownSparesProxiedServers()
    {
        ClientLab client;
        connectTo(client, "Proxied-Samplonia", true);
        QVERIFY(hasDefaultRoute());
        QCOMPARE(whereabouts(), QByteArray("198.51.100.2, Homeland"));
        QCOMPARE(whereabouts("--socks5-hostname 198.18.4.1:1080"), QByteArray("203.0.113.24, Samplonia"));
        QVERIFY(client.disconnects());
        QVERIFY(hasDefaultRoute());
    }
};

QTEST_MAIN(ClientGuardTest)
#include "ClientGuardTest.moc"
