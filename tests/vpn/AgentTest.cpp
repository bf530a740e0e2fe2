#include "tests/vpn/TestClient.h"
#include "vpn/ManagementPort.h"

#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

/// The byte-count agent against a stand-in for OpenVPN's management interface.
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

    void readsReports_data()
    {
        QTest::addColumn<QList<QByteArray>>("reads");
        QTest::addColumn<QString>("counts");
        using Reads = QList<QByteArray>;
        QTest::newRow("two in a read") << Reads{">BYTECOUNT:1,2\r\n>BYTECOUNT:3,4\r\n"} << "3/4";
        QTest::newRow("halves") << Reads{"SUCCESS: bytecount\r\n>BYTECOUNT:10", "24,20", "48\r\n"} << "1024/2048";
        QTest::newRow("no second field, a flood")
            << Reads{">BYTECOUNT:9\r\n>BYTECOUNT:1,2\r\n>BYTECOUNT:9\r\n", QByteArray(300000, 'x'), "\n"} << "1/2";
        QTest::newRow("zeros") << Reads{">BYTECOUNT:0,0\r\n", ">BYTECOUNT:0,3\r\n"} << "0/3";
    }
    void readsReports()
    {
        QFETCH(QList<QByteArray>, reads);
        QTcpSocket *socket = connectClient();
        socket->write(">INFO:OpenVPN Management Interface Version 5 -- type 'help' for more info\r\n");
        QTRY_COMPARE(socket->bytesAvailable(), qint64(13));
        QCOMPARE(socket->readAll(), QByteArray("bytecount 1\r\n"));
        for (const QByteArray &part : reads) {
            socket->write(part);
            QTRY_COMPARE(socket->bytesToWrite(), qint64(0));
            QTest::qWait(50); // makes it likely, not certain, that the parts are reads of their own
        }
        QFETCH(QString, counts);
        QTRY_COMPARE(m_client->counts(), counts);
    }

    void ends()
    {
        connectClient(); // a server that says nothing
        m_client->setState(VPNClient::DISCONNECTING);
        QVERIFY(m_client->m_agent->wait(2000)); // close() has three seconds
        QTcpSocket *socket = connectClient();
        m_server.close();
        socket->abort();
        QVERIFY(m_client->m_agent->wait(10000));
    }

    void isForOpenVPNOnly()
    {
        m_client->m_option.type = VPNClient::L2TP;
        m_client->setState(VPNClient::CONNECTED);
        QVERIFY(m_client->m_agent->wait(10000));
        QVERIFY(!m_server.waitForNewConnection(100));
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
