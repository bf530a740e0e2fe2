#include "common/AppPath.h"
#include "common/Wait.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"
#include "tests/vpn/TestClient.h"

#include <QDir>

#include <unistd.h>
#include <utility>

/// The numbers of this process's descriptors, threads and children.
static QList<int> owned()
{
    const auto entries = [](const char *folder) {
        return QDir(folder).entryList(QDir::AllEntries | QDir::System).size();
    };
    const QByteArray children = fileBytes(QString("/proc/self/task/%1/children").arg(getpid()));
    return {entries("/proc/self/fd"), entries("/proc/self/task"), children.count(' ')};
}

/// The client as its owner sees it: states, refusals, set-up, waits, and what it leaves behind.
class ClientTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        putScript(appPath("/compose"), "up='echo Initialization Sequence Completed'\ncase $2 in */up) $up ;;\n"
                                       "*/late) sleep 0.4; $up ;;\n*/drops) $up; exit ;;\n*/dies) exit ;;\nesac\n"
                                       "exec sleep 60\n");
        putScript(appPath("/down.sh"), "");
    }

    void refusals()
    {
        TestClient client;
        for (int type : {-1, 5}) {
            QVERIFY(!client.openWith(type) && client.states.isEmpty());
            QCOMPARE(client.messages.takeLast(), QString("[ERROR]Type is not valid."));
        }
        for (const char *text : {"a\nb", "a\r"}) { // the rest would answer the next prompt
            QVERIFY(!client.openWith(VPNClient::OPENVPN, "/up", text) &&
                    !client.openWith(VPNClient::OPENVPN, "/up", "user", text));
            QCOMPARE(client.messages.last(), QString("[ERROR]username or password is not matched."));
        }
        QFile::remove(appPath("/compose"));
        QVERIFY(!client.openWith(VPNClient::OPENVPN) && client.state() == VPNClient::VPNERROR);
        QCOMPARE(client.messages.last(), QString("[ERROR]openvpn compose is missed."));
    }

    /// The key is never the caller's.
    void setupHelper()
    {
        const std::tuple<int, QByteArray, const char *> cases[] = {
            {VPNClient::L2TP, "echo \"$*:Success\"",
             "|L2TP Korvan-L2TP host mellowfinch:Success|Setup local driver done."},
            {VPNClient::PPTP, "echo $* >&2", "|PPTP Korvan-PPTP host|[ERROR]Setup local driver failed."},
            {VPNClient::IKEV2, "exec sleep 60", "||[ERROR]Setup local driver failed."}};
        for (const auto &[type, helper, messages] : cases) {
            putScript(appPath("/compose4"), helper);
            TestClient client;
            client.m_timeout = 1000;
            const bool done = client.setup({VPNClient::TYPE(type), "update", "host", "the caller's key"});
            COMPARE_CASE(helper, client.messages.join('|').remove('\n'),
                         QString("Checking local settings...") + messages);
            COMPARE_CASE(helper, done, QByteArray(messages).contains("done."));
        }
    }

    /// What comes up within the last second before the limit is late, too. A new open() closes it first.
    void timesOut()
    {
        TestClient client;
        client.m_timeout = 1200;
        for (const char *profile : {"/hangs", "/late"}) {
            QVERIFY(!client.openWith(VPNClient::OPENVPN, profile) && client.state() == VPNClient::VPNERROR);
            QCOMPARE(client.messages.last(), QString("[ERROR]Connect to server timeout"));
        }
        QVERIFY(client.messages.contains("State is 4, trying to close it."));

        client.m_timeout = 3000; // a box that is open beyond the end is not waiting for it
        client.messages.clear();
        connect(&client, &VPNClient::message, &client, [&client](const QString &text) {
            if (text.startsWith("[ERROR]")) {
                QCoreApplication::postEvent(&client,
                                            new QEvent(QEvent::User)); // Qt passes over older ones until then
                Wait().run(client.m_timeout);
            }
        });
        QVERIFY(!client.openWith(VPNClient::OPENVPN, "/dies"));
        QCOMPARE(client.errors().join(";"), QString("[ERROR]vpn connect error, please check log"));
    }

    /// Neither takes the other one back, nor is either told twice.
    void timesOutWhileItComesUp()
    {
        TestClient client;
        const auto timeOut = [&client, late = true]() mutable {
            client.setState(std::exchange(late, false) ? VPNClient::VPNERROR : client.state());
        };
        connect(&client, &VPNClient::connected, &client, timeOut, Qt::DirectConnection);
        QVERIFY(client.openWith(VPNClient::OPENVPN, "/up") && client.state() == VPNClient::VPNERROR);
        QTRY_COMPARE(client.states.join(' '), QString("2 3 4"));
    }

    /// An open() that was overtaken has failed, whatever became of the one that overtook it.
    void opensAndClosesWhileWaiting()
    {
        TestClient client;
        bool inner = false;
        QTimer::singleShot(200, &client, [&] { inner = client.openWith(VPNClient::OPENVPN, "/up"); });
        QVERIFY(!client.openWith(VPNClient::OPENVPN, "/hangs") && inner);
        QVERIFY(client.messages.contains("State is 2, trying to close it."));
        QVERIFY(client.errors().isEmpty() && client.state() == VPNClient::CONNECTED);
        QElapsedTimer elapsed;
        elapsed.start();
        QTimer::singleShot(200, &client,
                           [&] { inner = client.close() || client.openWith(VPNClient::OPENVPN, "/up"); });
        QVERIFY(client.close() && elapsed.elapsed() >= 3000 && !inner);
        QCOMPARE(client.errors(), QStringList("[ERROR]Close opened connection failed."));
        QVERIFY(client.state() == VPNClient::DISCONNECTED && client.type() == -1);
    }

    /// 100 connections, of which a third is closed: all at once, each close() in the event loop of the one before.
    void nothingIsLeftBehind()
    {
        const QList<int> before = owned();
        for (int round = 0; round < 3; ++round) {
            std::vector<TestClient> clients(12);
            for (TestClient &client : clients) {
                client.openWith(VPNClient::OPENVPN, "/dies");
                client.openWith(VPNClient::OPENVPN, "/drops");
                QTRY_VERIFY(client.isFinished());
                QVERIFY(client.openWith(VPNClient::OPENVPN, "/up"));
            }
            for (TestClient &client : clients) {
                QTimer::singleShot(0, &client, [&client] { client.close(); });
            }
            QTRY_COMPARE_WITH_TIMEOUT(clients.front().state(), VPNClient::DISCONNECTED, 20000);
        }
        QTRY_COMPARE(owned(), before);
    }
};

QTEST_GUILESS_MAIN(ClientTest)
#include "ClientTest.moc"
