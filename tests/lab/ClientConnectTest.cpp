#include "tests/lab/ClientLab.h"

#include "common/AppPath.h"
#include "stats/TransferTotals.h"

#include <QCheckBox>
#include <QDir>
#include <QPushButton>
#include <QTimer>

/// Login and connection through the real buttons, against the service and the servers of the lab.
class ClientConnectTest : public QObject
{
    Q_OBJECT

private slots:
    void firstLoginAndConnect()
    {
        ClientLab client;
        client.startLoggedIn("Examplia-1");
        QVERIFY(client.shows("lbCountry", "Homeland") && client.connects());
        QVERIFY(client.shows("lbCountry", "Examplia") && client.shows("lbPublicIP", "198.18.1.2"));
        QVERIFY(client.shows("lbServerIP", "203.0.113.21"));
        QCOMPARE(whereabouts(), QByteArray("198.18.1.2, Examplia"));
        QVERIFY(fileBytes("/etc/resolv.conf").contains("nameserver 198.18.1.1") && !ipv6IsOpen());
        QVERIFY(client.disconnects());
        QVERIFY(client.shows("lbCountry", "Homeland") && client.label("lbServerIP").isEmpty());
    }

    /// There is no PPP in the lab, so a stand-in notes what the helper is asked.
    void l2tpAsksForThePassword()
    {
        ClientLab client;
        const QString asked = appPath("/cfg/asked");
        putScript(appPath("/compose4"),
                  "echo \"$*\" >>'" + asked.toUtf8() + "'; echo Recv 5; echo Send 6; echo Success");
        client.start();
        client.find<QComboBox>("cmProto")->setCurrentText("L2TP");
        client.logInTo("Examplia-L2TP-1");
        client.boxes.expect("Notify", "Update Successful.");
        QVERIFY(client.press("pbUpAccount"));
        client.find<QComboBox>("cmServer")->setCurrentText("Samplonia-L2TP-1");
        QCOMPARE(client.items("cmServer"), QStringList({"Examplia-L2TP-1", "Samplonia-L2TP-1"}));
        QTimer answer;
        connect(&answer, &QTimer::timeout, [] {
            if (QDialog *box = ClientWindow::openDialog()) {
                QTest::keyClicks(box->findChild<QLineEdit *>("edPass"), "pass word");
                box->findChild<QCheckBox *>("ckRem")->click();
                box->findChild<QPushButton *>("btnOK")->click();
            }
        });
        answer.start(10);
        QVERIFY(client.connects());
        QTRY_VERIFY(fileBytes(asked).endsWith("CHECK Korvan-L2TP\n"));
        QVERIFY(client.disconnects());
        QCOMPARE(fileBytes(asked).replace("CHECK Korvan-L2TP\nCHECK", "CHECK"),
                 QByteArray("L2TP Korvan-L2TP 203.0.113.23 mellowfinch\nKorvan-L2TP alice pass word\n"
                            "CHECK Korvan-L2TP\nKorvan-L2TP\n"));
        QCOMPARE(fileBytes(appPath("/l2tp")), QByteArray("pass word").toBase64());
        QFile::remove(appPath("/compose4")); // the next test brings the real one
    }

    /// Login, tunnel and pages take the way through the proxy, as its own log tells.
    void proxies()
    {
        const std::tuple<const char *, const char *, bool, QString, QByteArray> proxies[] = {
            {"rbHttp", "LAB_HTTP_PROXY", false, "/http-proxy.log", "CONNECT "},
            {"rbHttp", "LAB_HTTP_AUTH_PROXY", true, "/http-auth-proxy.log", "CONNECT "},
            {"rbSocks", "LAB_SOCKS_PROXY", false, "/socks-proxy.log", "connected to "},
        };
        for (const auto &[type, variable, asksForPassword, log, connection] : proxies) {
            ClientLab client;
            client.start();
            const QString address = qEnvironmentVariable(variable);
            client.find<QAbstractButton>(type)->click();
            client.find<QLineEdit>("edProxyAddr")->setText(address.section(':', 0, 0));
            client.find<QLineEdit>("edProxyPort")->setText(address.section(':', 1));
            client.find<QLineEdit>("edProxyUser")->setText(qEnvironmentVariable("LAB_PROXY_USER"));
            client.find<QLineEdit>("edProxyPass")->setText(qEnvironmentVariable("LAB_PROXY_PASSWORD"));
            client.find<QAbstractButton>("pbSaveProxy")->click();
            client.logInTo("Examplia-1-TCP");
            client.tick("cbProxyAuth", asksForPassword); // which is about the tunnel only
            QVERIFY(client.connects() && !QFile::exists(appPath("/cfg/proxy")));
            QCOMPARE(whereabouts(), QByteArray("198.18.11.2, Examplia"));
            QVERIFY(client.shows("lbCountry", "Proxyland"));
            const QByteArray logged = fileBytes(qEnvironmentVariable("LAB_DIR") + log);
            for (const QByteArray host : {"api.korvan.example", "vpn1.korvan.example:443", "ip.korvan.example"}) {
                QVERIFY2(logged.contains(host.contains(':') ? connection + host : host), logged.constData());
            }
            QVERIFY(client.breakTunnel());
        }
    }

    /// Into another day and another month; quitting while connected adds the bytes to the file.
    void totalsRollOver()
    {
        constexpr quint64 kBefore = 5 << 20;
        constexpr quint64 kLoaded = 3 << 20;
        const QDate today = QDate::currentDate();
        ClientLab client;
        QDir().mkpath(appPath("/cfg"));
        UpdateTotalDataTransfer(kBefore, kBefore, QDate(2020, today.month() % 12 + 1, today.day() == 1 ? 2 : 1));
        ClientLab::order("/archives/load", "rate=1500000", QByteArray(kLoaded, 'x'));
        client.startLoggedIn("Examplia-1");
        QVERIFY(client.connects());
        // Rolled over before anything comes: the file counts twice what comes with the roll-over.
        QTRY_VERIFY(!client.label("lbSessionRecv").isEmpty());
        inHome("curl -sk -m 30 https://portal.korvan.example/archives/load >/dev/null");
        QVERIFY(client.shows("lbSessionRecv", "3MB"));
        QCOMPARE(client.label("lbTotalRecv") + client.label("lbTotalRD"), QString("8MB3MB")); // the month's is 3 MB
        client.end();
        TransferCounters stored;
        GetTotalDataTransfer(stored.totalReceived, stored.totalSent, stored.day, stored.dayReceived, stored.daySent,
                             stored.month, stored.monthReceived, stored.monthSent);
        const quint64 received = stored.totalReceived - kBefore;
        QVERIFY2(received > kLoaded && received < 2 * kLoaded, "with what TCP adds");
        QVERIFY(stored.dayReceived == received && stored.monthReceived == received && stored.totalSent > kBefore);
    }

    /// Nothing that the one before left is in the way of the next.
    void tenInARow()
    {
        ClientLab client;
        client.startLoggedIn("Examplia-1");
        for (int round = 0; round < 10; ++round) {
            client.find<QComboBox>("cmServer")
                ->setCurrentText(round % 2 == 0 ? "Examplia-1" : "Samplonia-Surfing-1-TCP");
            QVERIFY(client.connects());
            QCOMPARE(whereabouts(), QByteArray(round % 2 == 0 ? "198.18.1.2, Examplia" : "198.18.13.2, Samplonia"));
            QVERIFY(round % 5 == 0 ? client.disconnects() : client.breakTunnel());
        }
    }
};

QTEST_MAIN(ClientConnectTest)
#include "ClientConnectTest.moc"
