#include "tests/vpn/TestClient.h"
#include "vpn/ManagementPort.h"

#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

/// The byte-count agent against a stand-in for OpenVPN's management interface, and the search for its port.
class AgentTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        // Not for the loopback: the agent must pass it by.
        QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::Socks5Proxy, "127.0.0.1", 1));
        m_server.setProxy(QNetworkProxy::NoProxy);
        m_server.close();
        QVERIFY(m_server.listen(QHostAddress::LocalHost));
        VPNMGRPORT = QString::number(m_server.serverPort());
        m_client = std::make_unique<TestClient>();
        m_client->m_option.type = VPNClient::OPENVPN;
        m_client->m_agent = std::make_unique<VPNAgent>();
        m_client->m_agent->setClient(m_client.get());
    }

    void readsReports()
    {
        QTcpSocket *socket = connectClient();
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
            QTRY_COMPARE(m_client->counts(), QString(counts));
        }
        m_client->setState(VPNClient::DISCONNECTING);
        QVERIFY(m_client->m_agent->wait(2000)); // close() has three seconds
    }

    void endsWithTheServer()
    {
        QTcpSocket *socket = connectClient();
        m_server.close();
        socket->abort();
        QVERIFY(m_client->m_agent->wait(10000));
    }

    void managementPortSearch()
    {
        VPNMGRPORT = "44358";
        QVERIFY(UpdateValidManagementPort());
        for (const QHostAddress::SpecialAddress address : {QHostAddress::Any, QHostAddress::LocalHost}) {
            QTcpServer busy;
            busy.setProxy(QNetworkProxy::NoProxy);
            QVERIFY(busy.listen(address, VPNMGRPORT.toUShort()));
            QVERIFY(UpdateValidManagementPort());
            QVERIFY(VPNMGRPORT.toInt() > busy.serverPort());
        }
        VPNMGRPORT = VPNMGRPORTMAX;
        QVERIFY(!UpdateValidManagementPort());
        QCOMPARE(VPNMGRPORT, VPNMGRPORTMAX);
    }

private:
    QTcpSocket *connectClient()
    {
        m_client->setState(VPNClient::CONNECTED);
        m_server.waitForNewConnection(10000);
        return m_server.nextPendingConnection();
    }

    std::unique_ptr<TestClient> m_client;
    QTcpServer m_server;
};

QTEST_GUILESS_MAIN(AgentTest)
#include "AgentTest.moc"
