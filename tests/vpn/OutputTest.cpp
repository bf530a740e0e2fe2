#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "tests/vpn/TestClient.h"
#include "vpn/HelperArguments.h"
#include "vpn/HelperOutput.h"
#include "vpn/ManagementPort.h"
#include "vpn/OpenVPNReader.h"

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

    /// A chunk's output is the number of its OpenVPNOutput.
    void openVPN()
    {
        const QByteArray stamp = "2026-11-23 07:24:30 ";
        const QByteArray up = "Initialization Sequence Completed";
        const std::pair<QList<QByteArray>, const char *> cases[] = {
            {{stamp + up + "\n", "Mon Nov  3 07:24:30 2026 us=12 " + up + "\r\n", up}, "444"},
            {{stamp + up + " With Errors ( see ... )\n"}, "3"},
            {{stamp + "AUTH: Received control message: AUTH_FAILED,why\n", "AUTH_FAILED\n"}, "22"},
            {{"Enter Auth Username:Enter Auth Password:", "Enter Auth Password:", stamp + up + "\n"}, "014"},
            {{"AUTH_FAILED\nEnter Auth Password:", up + "\nAUTH_FAILED"}, "12"}, // the order of the search
            {{"2026-11-23 07:2", "4:30 " + up + "\n", up.left(9), up.mid(9) + "\n"}, "5455"},
            {{QByteArray("x\0\n", 3), up}, "54"},
            // What a server or a proxy has chosen, as OpenVPN prints it.
            {{stamp + "VERIFY OK: depth=0, O=" + stamp + up + ", CN=x\\0A\\0D" + up + "\\0A\n"}, "5"},
            {{stamp + "[AUTH_FAILED] Peer Connection Initiated with [AF_INET]203.0.113.21:1300\n"}, "5"},
            {{"PUSH: Received control message: 'PUSH_REPLY," + up + ",Enter Auth Username:,ping 2'\n"}, "5"},
            {{stamp + "Options error: Unrecognized option [PUSH-OPTIONS]:3: " + up + " (2.6.14)\n"}, "5"},
            {{stamp + "HTTP proxy returned: 'HTTP/1.0 200 AUTH_FAILED'\n"}, "5"},
            {{stamp + "VERIFY OK: O=" + QByteArray(4000, 'x'), stamp + up, "\n" + up}, "554"},
            {{"AUTH: Received control message: ", "AUTH_FAILED"}, "52"},
        };
        for (const auto &[chunks, outputs] : cases) {
            OpenVPNReader reader;
            QByteArray read;
            for (const QByteArray &chunk : chunks) {
                read += QByteArray::number(int(reader.read(chunk).output));
            }
            COMPARE_CASE(chunks.first(), read, QByteArray(outputs));
        }
    }

    /// What the log gets is never taken for the engine's own error or for OpenVPN's word on its server.
    void misleadingMessages()
    {
        OpenVPNReader reader;
        const QString honest = "UDPv4 link remote: [AF_INET]203.0.113.21:1194\n2026-11-23 07:24:30 VERIFY OK: O=";
        QCOMPARE(reader.read(honest.toLatin1()).message, honest);
        for (const char *cut : {"2026-11-23 07:24:30 TCPv4_CLIENT link remote: 10.0.0.1:1",
                                "Not in the tunnel unless locked down: nothing", "[ERROR]openvpn error]"}) {
            QCOMPARE(reader.read(cut).message, QString(' ') + cut);
        }
    }

    /// Where a chunk holds several markers.
    void output()
    {
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
