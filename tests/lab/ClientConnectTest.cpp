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
    void init();
    void cleanup();
    void firstLoginAndConnect();
    void rememberedLoginConnectsByItself();
    void l2tpAsksForThePassword();
    void proxies_data();
    void proxies();
    void totalsRollOver_data();
    void totalsRollOver();
    void addsLittleToOpenVPNsTime();

private:
    int connectByHand(const QStringList &arguments) const;

    std::unique_ptr<ClientLab> m_client;
    QByteArray m_network;
};

void ClientConnectTest::init()
{
    m_network = networkState();
    m_client = std::make_unique<ClientLab>();
}

void ClientConnectTest::cleanup()
{
    QCOMPARE(m_client->boxes.takeFailures(), QString());
    QCOMPARE(m_client->boxes.left(), 0);
    m_client.reset();
    QVERIFY(networkReturnsTo(m_network));
}

void ClientConnectTest::firstLoginAndConnect()
{
    m_client->startLoggedIn("Examplia-1");
    QVERIFY(m_client->shows("lbCountry", "Homeland"));
    QVERIFY(m_client->press("pbConnect"));
    QVERIFY(m_client->isConnected());
    QVERIFY(m_client->shows("lbCountry", "Examplia"));
    QCOMPARE(m_client->label("lbPublicIP"), QString("198.18.1.2"));
    QVERIFY(m_client->shows("lbServerIP", "203.0.113.21"));
    QCOMPARE(whereabouts(), QByteArray("198.18.1.2, Examplia"));
    QVERIFY(inHome("cat /etc/resolv.conf").contains("nameserver 198.18.1.1"));
    QCOMPARE(inHome("curl -s -m 1 http://[2001:db8:113::10]/testip.php"), QByteArray());

    QVERIFY(m_client->press("pbDisconnect"));
    QVERIFY(m_client->isDisconnected());
    QVERIFY(m_client->shows("lbCountry", "Homeland"));
    QCOMPARE(m_client->label("lbServerIP"), QString());
}

void ClientConnectTest::rememberedLoginConnectsByItself()
{
    m_client->start();
    m_client->tick("cbRember");
    m_client->login("bob", QString::fromUtf8("a&b=c+d é"));
    m_client->openPage("Settings");
    m_client->tick("cbConnectOnBoot");
    m_client->find<QComboBox>("cmBootServer")->setCurrentText("Samplonia-Surfing-1");
    QVERIFY(m_client->press("pbSave"));

    m_client->start();
    QVERIFY(m_client->isConnected());
    QCOMPARE(m_client->label("lbName"), QString("bob"));
    QVERIFY(m_client->shows("lbCountry", "Samplonia"));
    QCOMPARE(whereabouts(), QByteArray("198.18.3.2, Samplonia"));
    QVERIFY(m_client->breakTunnel());
}

/// There is no PPP in the lab, so a stand-in notes what the helper is asked.
void ClientConnectTest::l2tpAsksForThePassword()
{
    const QString asked = appPath("/asked");
    QFile::remove(asked);
    putScript(appPath("/compose4"), "echo \"$*\" >>'" + asked.toUtf8() + "'; echo Recv 5; echo Send 6; echo Success");
    m_client->startLoggedIn("Examplia-1");
    m_client->find<QComboBox>("cmProto")->setCurrentText("L2TP");
    auto *servers = m_client->find<QComboBox>("cmServer");
    QCOMPARE(servers->count(), 2);
    servers->setCurrentText("Samplonia-L2TP-1");

    QTimer answer;
    connect(&answer, &QTimer::timeout, [] {
        if (auto *box = qobject_cast<KvL2TPBox *>(QApplication::activeModalWidget())) {
            QTest::keyClicks(box->findChild<QLineEdit *>("edPass"), "pass word");
            box->findChild<QCheckBox *>("ckRem")->click();
            box->findChild<QPushButton *>("btnOK")->click();
        }
    });
    answer.start(10);
    QVERIFY(m_client->press("pbConnect"));
    answer.stop();
    QVERIFY(m_client->isConnected());
    QVERIFY(m_client->press("pbDisconnect"));
    QVERIFY(m_client->isDisconnected());
    QCOMPARE(fileBytes(asked), QByteArray("L2TP Korvan-L2TP 203.0.113.23 mellowfinch\nKorvan-L2TP alice pass word\n"
                                          "CHECK Korvan-L2TP\nKorvan-L2TP\n"));
    QCOMPARE(fileBytes(appPath("/l2tp")), QByteArray("pass word").toBase64());
}

void ClientConnectTest::proxies_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("authentication");
    QTest::addColumn<QString>("log");
    QTest::addColumn<QByteArray>("entry");
    QTest::newRow("HTTP") << "rbHttp" << qEnvironmentVariable("LAB_HTTP_PROXY") << false << "http-proxy.log"
                          << QByteArray("CONNECT vpn1.korvan.example:443");
    QTest::newRow("HTTP with password") << "rbHttp" << qEnvironmentVariable("LAB_HTTP_AUTH_PROXY") << true
                                        << "http-auth-proxy.log" << QByteArray("CONNECT vpn1.korvan.example:443");
    QTest::newRow("SOCKS") << "rbSocks" << qEnvironmentVariable("LAB_SOCKS_PROXY") << false << "socks-proxy.log"
                           << QByteArray("connected to vpn1.korvan.example:443");
}

void ClientConnectTest::proxies()
{
    QFETCH(QString, type);
    QFETCH(QString, address);
    QFETCH(bool, authentication);
    QFETCH(QString, log);
    QFETCH(QByteArray, entry);
    m_client->startLoggedIn("Examplia-1-TCP");
    m_client->openPage("Proxy");
    QVERIFY(m_client->press(qPrintable(type)));
    m_client->find<QLineEdit>("edProxyAddr")->setText(address.section(':', 0, 0));
    m_client->find<QLineEdit>("edProxyPort")->setText(address.section(':', 1));
    if (authentication) {
        m_client->tick("cbProxyAuth");
        m_client->find<QLineEdit>("edProxyUser")->setText(qEnvironmentVariable("LAB_PROXY_USER"));
        m_client->find<QLineEdit>("edProxyPass")->setText(qEnvironmentVariable("LAB_PROXY_PASSWORD"));
    }
    QVERIFY(m_client->press("pbSaveProxy"));
    m_client->openPage("Dashboard");
    QVERIFY(m_client->press("pbConnect"));
    QVERIFY(m_client->isConnected());
    QVERIFY(!QFile::exists(appPath("/cfg/proxy")));
    QCOMPARE(whereabouts(), QByteArray("198.18.11.2, Examplia"));
    QVERIFY2(m_client->shows("lbCountry", "Proxyland"), "the client's own requests go through the proxy");
    const QByteArray logged = fileBytes(qEnvironmentVariable("LAB_DIR") + '/' + log);
    QVERIFY2(logged.contains(entry), logged.constData());
    QVERIFY(logged.contains("ip.korvan.example"));
    QVERIFY(m_client->breakTunnel());
}

static TransferCounters storedTotals()
{
    TransferCounters stored;
    GetTotalDataTransfer(stored.totalReceived, stored.totalSent, stored.day, stored.dayReceived, stored.daySent,
                         stored.month, stored.monthReceived, stored.monthSent);
    return stored;
}

void ClientConnectTest::totalsRollOver_data()
{
    const QDate today = QDate::currentDate();
    QTest::addColumn<QDate>("lastUse");
    QTest::newRow("a new day") << QDate(today.year(), today.month(), today.day() == 1 ? 2 : 1);
    QTest::newRow("a new month") << QDate(today.year(), today.month() == 1 ? 3 : 1, today.day());
}

void ClientConnectTest::totalsRollOver()
{
    QFETCH(QDate, lastUse);
    constexpr quint64 kBefore = 5 << 20;
    constexpr quint64 kLoaded = 3 << 20;
    const bool sameDay = lastUse.day() == QDate::currentDate().day();
    QDir().mkpath(appPath("/cfg"));
    UpdateTotalDataTransfer(kBefore, kBefore, lastUse);
    LabWindow::order("/archives/load", QString(), QByteArray(kLoaded, 'x'));

    m_client->startLoggedIn("Examplia-1");
    QVERIFY(m_client->press("pbConnect"));
    QVERIFY(m_client->isConnected());
    inHome("curl -sk -m 30 https://portal.korvan.example/archives/load >/dev/null");
    QVERIFY(m_client->shows("lbSessionRecv", "3MB"));
    QCOMPARE(m_client->label("lbTotalRecv"), QString("8MB"));
    QCOMPARE(m_client->label("lbTotalRD"), QString(sameDay ? "3MB" : "8MB")); // the month's
    QCOMPARE(storedTotals().totalReceived, kBefore);

    m_client->end(); // quit while connected
    const TransferCounters stored = storedTotals();
    const quint64 received = stored.totalReceived - kBefore;
    QVERIFY2(received > kLoaded && received < 2 * kLoaded, "with what TCP adds");
    QCOMPARE(stored.dayReceived, sameDay ? kBefore + received : received);
    QCOMPARE(stored.monthReceived, sameDay ? received : kBefore + received);
    QCOMPARE(stored.day, QDate::currentDate().day());
    QCOMPARE(stored.month, QDate::currentDate().month());
    QVERIFY(stored.totalSent > kBefore);
}

/// How many milliseconds OpenVPN takes from its start to the tunnel.
int ClientConnectTest::connectByHand(const QStringList &arguments) const
{
    QProcess process;
    QElapsedTimer timer;
    timer.start();
    process.start("/usr/sbin/openvpn", arguments);
    QByteArray output;
    while (!output.contains("Initialization Sequence Completed") && process.waitForReadyRead(60000)) {
        output += process.readAll();
    }
    const int elapsed = static_cast<int>(timer.elapsed());
    process.terminate();
    process.waitForFinished();
    return elapsed;
}

/// The command line of Korvan's own OpenVPN, with files for what it gets in open descriptors.
static QStringList openVPNCommandLine()
{
    putFile(appPath("/no-password"), "-\n");
    QList<QByteArray> words = fileBytes(QString("/proc/%1/cmdline").arg(openVPN())).split('\0');
    words.removeLast(); // behind the last NUL
    QStringList arguments;
    for (const QByteArray &word : words.mid(1)) {
        arguments += QString::fromUtf8(word);
    }
    arguments[arguments.indexOf("--config") + 1] = appPath("/cfg/OpenVPN/temp");
    arguments[arguments.indexOf("--askpass") + 1] = appPath("/no-password");
    return arguments;
}

/// From the press of the button to "CONNECTED", against the same OpenVPN started by hand.
void ClientConnectTest::addsLittleToOpenVPNsTime()
{
    constexpr int kRounds = 10;
    m_client->startLoggedIn("Examplia-1");
    QVector<int> pressed;
    QVector<int> byHand;
    for (int round = 0; round < kRounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        QVERIFY(m_client->press("pbConnect"));
        QVERIFY(m_client->isConnected());
        pressed += static_cast<int>(timer.elapsed());
        const QStringList arguments = openVPNCommandLine();
        QVERIFY(m_client->breakTunnel());
        byHand += connectByHand(arguments);
    }
    std::sort(pressed.begin(), pressed.end());
    std::sort(byHand.begin(), byHand.end());
    const int median = pressed.at(kRounds / 2);
    const int medianByHand = byHand.at(kRounds / 2);
    std::printf("from the button to CONNECTED: %d ms (%d to %d); OpenVPN by hand: %d ms (%d to %d); medians of %d\n",
                median, pressed.first(), pressed.last(), medianByHand, byHand.first(), byHand.last(), kRounds);
    QVERIFY2(median <= medianByHand + 50, "Korvan takes more than 50 ms of its own");
}

int main(int argc, char *argv[])
{
    return runLabTest<ClientConnectTest>(argc, argv);
}
#include "ClientConnectTest.moc"
