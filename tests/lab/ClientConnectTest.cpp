#include "tests/lab/ClientLab.h"

#include "common/AppPath.h"
#include "stats/TransferTotals.h"
#include "ui/KvL2TPBox.h"

#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <cstdio>

/// Login and connection through the real buttons, against the service and the servers of the lab.
class ClientConnectTest : public QObject
{
    Q_OBJECT

private slots:
    void firstLoginAndConnect();
    void rememberedLoginConnectsByItself();
    void l2tpAsksForThePassword();
    void proxies();
    void totalsRollOver();
    void addsLittleToOpenVPNsTime();
};

void ClientConnectTest::firstLoginAndConnect()
{
    ClientLab client;
    client.startLoggedIn("Examplia-1");
    QVERIFY(client.shows("lbCountry", "Homeland"));
    QVERIFY(client.connects());
    QVERIFY(client.shows("lbCountry", "Examplia") && client.shows("lbServerIP", "203.0.113.21"));
    QCOMPARE(client.label("lbPublicIP"), QString("198.18.1.2"));
    QCOMPARE(whereabouts(), QByteArray("198.18.1.2, Examplia"));
    QVERIFY(fileBytes("/etc/resolv.conf").contains("nameserver 198.18.1.1"));
    QVERIFY(!ipv6IsOpen());

    QVERIFY(client.disconnects());
    QVERIFY(client.shows("lbCountry", "Homeland"));
    QCOMPARE(client.label("lbServerIP"), QString());
}

void ClientConnectTest::rememberedLoginConnectsByItself()
{
    ClientLab client;
    client.start();
    client.tick("cbRember");
    client.login("bob", QString::fromUtf8("a&b=c+d é"));
    client.openPage("Settings");
    client.tick("cbConnectOnBoot");
    client.find<QComboBox>("cmBootServer")->setCurrentText("Samplonia-Surfing-1");
    QVERIFY(client.press("pbSave"));

    client.start();
    QVERIFY(client.isConnected());
    QCOMPARE(client.label("lbName"), QString("bob"));
    QVERIFY(client.shows("lbCountry", "Samplonia"));
    QCOMPARE(whereabouts(), QByteArray("198.18.3.2, Samplonia"));
    QVERIFY(client.breakTunnel());
}

/// There is no PPP in the lab, so a stand-in notes what the helper is asked.
void ClientConnectTest::l2tpAsksForThePassword()
{
    ClientLab client;
    const QString asked = appPath("/asked");
    QFile::remove(asked);
    putScript(appPath("/compose4"), "echo \"$*\" >>'" + asked.toUtf8() + "'; echo Recv 5; echo Send 6; echo Success");
    client.startLoggedIn("Examplia-1");
    client.find<QComboBox>("cmProto")->setCurrentText("L2TP");
    QCOMPARE(client.items("cmServer"), QStringList({"Examplia-L2TP-1", "Samplonia-L2TP-1"}));
    client.find<QComboBox>("cmServer")->setCurrentText("Samplonia-L2TP-1");

    QTimer answer;
    connect(&answer, &QTimer::timeout, [] {
        if (auto *box = qobject_cast<KvL2TPBox *>(QApplication::activeModalWidget())) {
            QTest::keyClicks(box->findChild<QLineEdit *>("edPass"), "pass word");
            box->findChild<QCheckBox *>("ckRem")->click();
            box->findChild<QPushButton *>("btnOK")->click();
        }
    });
    answer.start(10);
    QVERIFY(client.connects() && client.disconnects());
    QCOMPARE(fileBytes(asked), QByteArray("L2TP Korvan-L2TP 203.0.113.23 mellowfinch\nKorvan-L2TP alice pass word\n"
                                          "CHECK Korvan-L2TP\nKorvan-L2TP\n"));
    QCOMPARE(fileBytes(appPath("/l2tp")), QByteArray("pass word").toBase64());
}

/// Login, tunnel and pages take the way through the proxy, as its own log tells.
void ClientConnectTest::proxies()
{
    struct Proxy
    {
        const char *type;
        QString address;
        bool asksForPassword;
        QString log;
        QByteArray connection;
    };
    const Proxy proxies[] = {
        {"rbHttp", qEnvironmentVariable("LAB_HTTP_PROXY"), false, "/http-proxy.log", "CONNECT "},
        {"rbHttp", qEnvironmentVariable("LAB_HTTP_AUTH_PROXY"), true, "/http-auth-proxy.log", "CONNECT "},
        {"rbSocks", qEnvironmentVariable("LAB_SOCKS_PROXY"), false, "/socks-proxy.log", "connected to "},
    };
    for (const auto &[type, address, asksForPassword, log, connection] : proxies) {
        ClientLab client;
        client.start();
        client.find<QAbstractButton>(type)->click();
        client.find<QLineEdit>("edProxyAddr")->setText(address.section(':', 0, 0));
        client.find<QLineEdit>("edProxyPort")->setText(address.section(':', 1));
        if (asksForPassword) {
            client.tick("cbProxyAuth");
            client.find<QLineEdit>("edProxyUser")->setText(qEnvironmentVariable("LAB_PROXY_USER"));
            client.find<QLineEdit>("edProxyPass")->setText(qEnvironmentVariable("LAB_PROXY_PASSWORD"));
        }
        client.find<QAbstractButton>("pbSaveProxy")->click();
        client.logInTo("Examplia-1-TCP");
        QVERIFY(client.connects());
        QVERIFY(!QFile::exists(appPath("/cfg/proxy")));
        QCOMPARE(whereabouts(), QByteArray("198.18.11.2, Examplia"));
        QVERIFY(client.shows("lbCountry", "Proxyland"));
        const QByteArray logged = fileBytes(qEnvironmentVariable("LAB_DIR") + log);
        for (const QByteArray host : {"api.korvan.example", "vpn1.korvan.example:443", "ip.korvan.example"}) {
            QVERIFY2(logged.contains(host.contains(':') ? connection + host : host), logged.constData());
        }
        QVERIFY(client.breakTunnel());
    }
}

static TransferCounters storedTotals()
{
    TransferCounters stored;
    GetTotalDataTransfer(stored.totalReceived, stored.totalSent, stored.day, stored.dayReceived, stored.daySent,
                         stored.month, stored.monthReceived, stored.monthSent);
    return stored;
}

void ClientConnectTest::totalsRollOver()
{
    constexpr quint64 kBefore = 5 << 20;
    constexpr quint64 kLoaded = 3 << 20;
    const QDate today = QDate::currentDate();
    for (const bool newMonth : {false, true}) {
        ClientLab client;
        QDir().mkpath(appPath("/cfg"));
        UpdateTotalDataTransfer(kBefore, kBefore,
                                newMonth ? QDate(today.year(), today.month() == 1 ? 3 : 1, today.day())
                                         : QDate(today.year(), today.month(), today.day() == 1 ? 2 : 1));
        client.startLoggedIn("Examplia-1");
        QVERIFY(client.connects());
        QVERIFY(
            client.shows("lbTotalRecv", "5MB")); // rolled over before anything came, which the file would count twice
        load(kLoaded);
        QVERIFY(client.shows("lbSessionRecv", "3MB"));
        QCOMPARE(client.label("lbTotalRecv"), QString("8MB"));
        QCOMPARE(client.label("lbTotalRD"), QString(newMonth ? "3MB" : "8MB")); // the month's
        QCOMPARE(storedTotals().totalReceived, kBefore);

        client.end(); // quit while connected
        const TransferCounters stored = storedTotals();
        const quint64 received = stored.totalReceived - kBefore;
        QVERIFY2(received > kLoaded && received < 2 * kLoaded, "with what TCP adds");
        QCOMPARE(stored.dayReceived, newMonth ? kBefore + received : received);
        QCOMPARE(stored.monthReceived, newMonth ? received : kBefore + received);
        QCOMPARE(QDate(today.year(), stored.month, stored.day), today);
        QVERIFY(stored.totalSent > kBefore);
    }
}

/// How many milliseconds OpenVPN takes from its start to the tunnel.
static qint64 connectByHand(const QStringList &arguments)
{
    QProcess process;
    QElapsedTimer timer;
    timer.start();
    process.start("/usr/sbin/openvpn", arguments);
    QByteArray output;
    while (!output.contains("Initialization Sequence Completed") && process.waitForReadyRead(60000)) {
        output += process.readAll();
    }
    const qint64 elapsed = timer.elapsed();
    process.terminate();
    process.waitForFinished();
    return elapsed;
}

/// The command line of Korvan's own OpenVPN, with files for what it gets in open descriptors.
static QStringList openVPNCommandLine()
{
    putFile(appPath("/no-password"), "-\n");
    QStringList arguments;
    for (const QByteArray &word : fileBytes(QString("/proc/%1/cmdline").arg(openVPN())).split('\0')) {
        arguments += QString::fromUtf8(word);
    }
    arguments.removeFirst(); // the program
    arguments.removeLast();  // behind the last NUL
    arguments[arguments.indexOf("--config") + 1] = appPath("/cfg/OpenVPN/temp");
    arguments[arguments.indexOf("--askpass") + 1] = appPath("/no-password");
    return arguments;
}

/// From the press of the button to "CONNECTED", against the same OpenVPN started by hand.
void ClientConnectTest::addsLittleToOpenVPNsTime()
{
    constexpr int kRounds = 10;
    ClientLab client;
    client.startLoggedIn("Examplia-1");
    QVector<qint64> pressed;
    QVector<qint64> byHand;
    for (int round = 0; round < kRounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        QVERIFY(client.connects());
        pressed += timer.elapsed();
        const QStringList arguments = openVPNCommandLine();
        QVERIFY(client.breakTunnel());
        byHand += connectByHand(arguments);
    }
    for (auto *times : {&pressed, &byHand}) {
        std::sort(times->begin(), times->end());
        std::printf("%s: %lld ms, the median of %d (%lld to %lld)\n",
                    times == &pressed ? "from the button to CONNECTED" : "OpenVPN by hand", times->at(kRounds / 2),
                    kRounds, times->first(), times->last());
    }
    QVERIFY2(pressed.at(kRounds / 2) <= byHand.at(kRounds / 2) + 50, "Korvan takes more than 50 ms of its own");
}

int main(int argc, char *argv[])
{
    return runLabTest<ClientConnectTest>(argc, argv);
}
#include "ClientConnectTest.moc"
