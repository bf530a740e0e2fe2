#include "common/AppPath.h"
#include "tests/vpn/TestClient.h"
#include "vpn/HelperArguments.h"
#include "vpn/HelperOutput.h"
#include "vpn/ManagementPort.h"

#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

/// What the helpers say, printed or over OpenVPN's management port, without running any.
class OutputTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Not for the loopback: the agent must pass it by.
        QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::Socks5Proxy, "127.0.0.1", 1));
        m_server.setProxy(QNetworkProxy::NoProxy);
    }

    void sstpCommandLine()
    {
        const QString expected = "--user u --password p w host --log-level 3 --debug usepeerdns defaultroute "
                                 "refuse-pap refuse-eap noauth mtu %1 logfile ";
        for (const auto &[params, mtu] : {std::pair("abc", "1500"), std::pair("1400", "1400")}) {
            const VPNClient::OPTION option{VPNClient::SSTP, "u", "p w", {}, params, -1, {}, "host", {}};
            QCOMPARE(sstpArguments(option).join(' '), expected.arg(mtu) + appPath("/vpnlog.txt"));
        }
    }

    /// Where a chunk holds several markers.
    void output()
    {
        QCOMPARE(classifyOpenVPN("AUTH_FAILED\nEnter Auth Password:"), OpenVPNOutput::WantsPassword);
        QCOMPARE(classifyOpenVPN("Initialization Sequence Completed\nAUTH_FAILED"), OpenVPNOutput::AuthFailed);
        QCOMPARE(classifyService("No Error\nSuccess"), ServiceOutput::Success);
        QCOMPARE(classifySstp("authentication failed\nremote IP address 10.0.0.1"), SstpOutput::Connected);
        const ByteCount count = parseServiceCounts("Send 7\nRecv  18446744073709551615 \r\nSuccess\n");
        QVERIFY(count.received == ~quint64(0) && count.sent == 7);
    }

    void readsReports()
    {
        QVERIFY(m_server.listen(QHostAddress::LocalHost));
        VPNMGRPORT = QString::number(m_server.serverPort());
        TestClient client;
        client.m_option.type = VPNClient::OPENVPN;
        client.m_agent = std::make_unique<VPNAgent>();
        client.m_agent->setClient(&client);
        client.setState(VPNClient::CONNECTED);
        QVERIFY(m_server.waitForNewConnection(10000));
        QTcpSocket *socket = m_server.nextPendingConnection();
        socket->write(">INFO:OpenVPN Management Interface Version 5 -- type 'help' for more info\r\n");
        QTRY_COMPARE(socket->bytesAvailable(), qint64(13));
        QCOMPARE(socket->readAll(), QByteArray("bytecount 1\r\n"));
        const std::pair<QByteArray, const char *> reads[] = {
            {"SUCCESS: bytecount\r\n>BYTECOUNT:0,2\r\n>BYTECOUNT:10", "0/2"}, // ends within a report
            {"24,20\r\n>BYTECOUNT:3,", "1024/20"},
            {"4\n>BYTECOUNT:9\r\n>INFO:1,2\r\n", "3/4"}, // a field short, and no report
            {">BYTECOUNT:1,2\r\n>BYTECOUNT: 5 , 6 ,7\n", "5/6"},
            {QByteArray(300000, 'x') + "\n>BYTECOUNT:7,8\r\n", "7/8"},
        };
        for (const auto &[part, counts] : reads) {
            socket->write(part);
            QTRY_COMPARE(client.counts(), QString(counts));
        }
        client.setState(VPNClient::DISCONNECTING);
        QVERIFY(client.m_agent->wait(2000)); // close() has three seconds
    }

    void managementPortSearch()
    {
        VPNMGRPORT = "44358";
        QVERIFY(UpdateValidManagementPort());
        m_server.close();
        QVERIFY(m_server.listen(QHostAddress::LocalHost, VPNMGRPORT.toUShort()));
        QVERIFY(UpdateValidManagementPort() && VPNMGRPORT.toInt() > m_server.serverPort());
        VPNMGRPORT = VPNMGRPORTMAX;
        QVERIFY(!UpdateValidManagementPort() && VPNMGRPORT == VPNMGRPORTMAX);
    }

private:
    QTcpServer m_server;
};

QTEST_GUILESS_MAIN(OutputTest)
#include "OutputTest.moc"
