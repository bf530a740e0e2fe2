#include "common/AppPath.h"
#include "vpn/HelperArguments.h"
#include "vpn/HelperOutput.h"
#include "vpn/ManagementPort.h"

#include <QTcpServer>
#include <QTest>

/// What goes to the helpers and what comes back, without running any.
class OutputTest : public QObject
{
    Q_OBJECT

private slots:
    void arguments_data()
    {
        QTest::addColumn<QStringList>("built");
        QTest::addColumn<QString>("expected");
        const QString scripts = "--script-security 2 --up " + appPath("/up.sh") + " --down " + appPath("/down.sh");
        VPNClient::OPTION option;
        QTest::newRow("openvpn, bare") << openVPNArguments(option, {}) << scripts;
        option.config = "/cfg/OpenVPN/temp";
        option.password = "p w";
        option.params = "|--http-proxy|h|8080||--cd|/d|";
        const QString all = "--config " + appPath("/cfg/OpenVPN/temp") + " --auth-user-pass --auth-nocache " +
                            "--http-proxy h 8080 --cd /d --management 127.0.0.1 44360 " + scripts;
        QTest::newRow("openvpn, all") << openVPNArguments(option, "44360") << all;
        option.user = "u";
        option.server = "s";
        for (const char *mtu : {"abc", "0", "1400"}) {
            option.params = mtu;
            QTest::addRow("sstp, mtu %s", mtu)
                << sstpArguments(option)
                << "--user u --password p w s --log-level 3 --debug usepeerdns defaultroute refuse-pap refuse-eap "
                   "noauth mtu " +
                       QString(option.params == "1400" ? "1400" : "1500") + " logfile " + appPath("/vpnlog.txt");
        }
        option.type = VPNClient::L2TP;
        QTest::newRow("dial") << serviceConnectArguments(option) << "Korvan-L2TP u p w";
        QTest::newRow("check") << serviceStatusArguments(VPNClient::PPTP) << "CHECK Korvan-PPTP";
        QTest::newRow("hang up") << serviceDisconnectArguments(VPNClient::IKEV2) << "Korvan-IKEv2";
    }
    void arguments()
    {
        QFETCH(QStringList, built);
        QTEST(built.join(' '), "expected");
    }

    void chunks()
    {
        QCOMPARE(classifyOpenVPN("Enter Auth Username:Enter Auth Password:"), OpenVPNOutput::WantsUser);
        QCOMPARE(classifyOpenVPN("AUTH_FAILED\nEnter Auth Password:"), OpenVPNOutput::WantsPassword);
        QCOMPARE(classifyOpenVPN("Initialization Sequence Completed\nAUTH_FAILED"), OpenVPNOutput::AuthFailed);
        QCOMPARE(classifyOpenVPN("2026 Initialization Sequence Completed\n"), OpenVPNOutput::TunnelUp);
        QCOMPARE(classifyOpenVPN("Initialization Sequence Completed With Errors"), OpenVPNOutput::TunnelFailed);
        QCOMPARE(classifyOpenVPN("With Errors auth username: auth_failed"), OpenVPNOutput::Other);
        QCOMPARE(classifyService("No Error\nSuccess"), ServiceOutput::Success);
        QCOMPARE(classifyService("Error 691"), ServiceOutput::Error);
        QCOMPARE(classifyService("success error"), ServiceOutput::Other);
        QCOMPARE(classifySstp("authentication failed\nremote IP address 10.0.0.1"), SstpOutput::Connected);
        QCOMPARE(classifySstp("CHAP authentication failed"), SstpOutput::AuthFailed);
        QCOMPARE(classifySstp("bad username or password"), SstpOutput::AuthFailed);
        const ByteCount count = parseServiceCounts("Send 7\nRecv  18446744073709551615 \r\nSuccess\n");
        QCOMPARE(count.received, ~quint64(0));
        QCOMPARE(count.sent, quint64(7));
        QCOMPARE(parseServiceCounts("Recv 5").received, quint64(5));
    }

    void byteCountReports_data()
    {
        QTest::addColumn<QByteArray>("buffer");
        QTest::addColumn<QString>("taken");
        QTest::addColumn<QByteArray>("kept");
        const auto row = [](const char *buffer, const char *taken, const char *kept) {
            QTest::newRow(buffer) << QByteArray(buffer) << QString(taken) << QByteArray(kept);
        };
        row(">BYTECOUNT:1024,2048\r\n", "1024/2048", "");
        row(">BYTECOUNT:1,2\r\n>BYTECOUNT:3,4\r\n", "3/4", "");
        row(">BYTECOUNT:1,2\n>BYTECOUNT:3,", "1/2", ">BYTECOUNT:3,");
        row(">BYTECOUNT:10", "", ">BYTECOUNT:10");
        row(">BYTECOUNT:5\n", "", "");
        row("SUCCESS: ...\r\n>BYTECOUNT: 5 , 6 ,7\n", "5/6", "");
        row(">BYTECOUNT:-1,x\n", "0/0", "");
        row(">INFO:1,2\r\n", "", "");
    }
    void byteCountReports()
    {
        QFETCH(QByteArray, buffer);
        const auto count = takeByteCount(buffer);
        QTEST(count ? QString("%1/%2").arg(count->received).arg(count->sent) : QString(), "taken");
        QTEST(buffer, "kept");
    }

    void managementPortSearch()
    {
        QVERIFY(UpdateValidManagementPort());
        QTcpServer busy;
        QTcpServer busyOnLoopback;
        QVERIFY(busy.listen(QHostAddress::Any, VPNMGRPORT.toUShort()));
        QVERIFY(UpdateValidManagementPort());
        QVERIFY(VPNMGRPORT.toInt() > busy.serverPort());
        QVERIFY(busyOnLoopback.listen(QHostAddress::LocalHost, VPNMGRPORT.toUShort()));
        QVERIFY(UpdateValidManagementPort());
        QVERIFY(VPNMGRPORT.toInt() > busyOnLoopback.serverPort());
        const QString last = VPNMGRPORT;
        busy.close();
        QVERIFY(UpdateValidManagementPort());
        QCOMPARE(VPNMGRPORT, last); // the search never goes back
        VPNMGRPORT = VPNMGRPORTMAX;
        QVERIFY(!UpdateValidManagementPort());
        QCOMPARE(VPNMGRPORT, VPNMGRPORTMAX);
    }
};

QTEST_GUILESS_MAIN(OutputTest)
#include "OutputTest.moc"
