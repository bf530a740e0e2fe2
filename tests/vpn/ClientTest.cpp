#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"
#include "tests/vpn/TestClient.h"
#include "vpn/ManagementPort.h"

#include <QDir>

#include <sys/wait.h>
#include <unistd.h>

/// A worker that looks at nothing.
class StuckClient : public TestClient
{
protected:
    // The sanitizers stand a thread's being cancelled only outside a sleep, and in a function without locals.
    void run() override
    {
        for (;;) {
            setTerminationEnabled(false);
            msleep(10);
            setTerminationEnabled(true);
        }
    }
};

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

    void announcesStatesOnce()
    {
        TestClient client;
        void (VPNClient::*const announcements[])() = {&VPNClient::disconnected, &VPNClient::disconnecting,
                                                      &VPNClient::connecting, &VPNClient::connected,
                                                      &VPNClient::vpnerror};
        for (int s = 0; s < 5; ++s) {
            connect(&client, announcements[s], [&client, s] { client.states << QString("own %1").arg(s); });
        }
        for (int s : {0, 2, 2, 3, 4, 9, 1, 0}) {
            client.setState(VPNClient::STATE(s));
        }
        QCOMPARE(client.states.join(' '), QString("2 own 2 3 own 3 4 own 4 9 1 own 1 0 own 0"));
    }

    void refusals()
    {
        TestClient client;
        for (int type : {-2147483647, -1, 5}) {
            const VPNClient::SETUP what(VPNClient::TYPE(type), "", "", "");
            QVERIFY(!client.setup(what) && !client.unsetup(what) && !client.close() && client.messages.isEmpty());
            QVERIFY(!client.openWith(type) && client.states.isEmpty());
            QCOMPARE(client.messages.takeLast(), QString("[ERROR]Type is not valid."));
        }
        client.setState(VPNClient::CONNECTED);
        QVERIFY(!client.openWith(VPNClient::OPENVPN));
        QCOMPARE(client.messages.join('|'),
                 QString("State is 3, trying to close it.|[ERROR]Close opened connection failed."));
        client.setState(VPNClient::DISCONNECTED);
        for (const char *text : {"a\nb", "a\r"}) { // the rest would answer the next prompt
            QVERIFY(!client.openWith(VPNClient::OPENVPN, "/up", text));
            QVERIFY(!client.openWith(VPNClient::OPENVPN, "/up", "user", text));
            QCOMPARE(client.messages.last(), QString("[ERROR]username or password is not matched."));
        }
        QFile::remove(appPath("/compose"));
        QVERIFY(!client.openWith(VPNClient::OPENVPN) && client.state() == VPNClient::VPNERROR);
        QCOMPARE(client.messages.last(), QString("[ERROR]openvpn compose is missed."));
    }

    void setupHelper()
    {
        const QByteArray echo = "echo \"$*:Success\"";
        const std::tuple<int, bool, QByteArray, const char *> cases[] = {
            {0, true, {}, "Checking installed tap/tun driver...|Install tap/tun driver done."},
            // Never the caller's key.
            {2, true, echo,
             "Checking local settings...|L2TP Korvan-L2TP host mellowfinch:Success|Setup local driver done."},
            {1, true, "echo $* >&2",
             "Checking local settings...|PPTP Korvan-PPTP host|[ERROR]Setup local driver failed."},
            {1, true, "exec sleep 60", "Checking local settings...||[ERROR]Setup local driver failed."},
            {4, true, {}, "[ERROR]Compose is not exist."},
            {3, false, echo, "Remove local driver...|SSTP Korvan-SSTP:Success|Remove local driver done."},
            {4, false, "exit", "Remove local driver...||[ERROR]Remove local driver failed."},
        };
        for (const auto &[type, setup, helper, messages] : cases) {
            putScript(appPath("/compose4"), helper);
            if (helper.isEmpty()) {
                QFile::remove(appPath("/compose4"));
            }
            TestClient client;
            client.m_timeout = 1000;
            const VPNClient::SETUP what(VPNClient::TYPE(type), "update", "host", "the caller's key");
            const bool done = setup ? client.setup(what) : client.unsetup(what);
            COMPARE_CASE(messages, client.messages.join('|').remove('\n'), messages);
            COMPARE_CASE(messages, done, QByteArray(messages).contains("done."));
            COMPARE_CASE(messages, client.state() == VPNClient::VPNERROR, QByteArray(messages).contains("failed."));
        }
    }

    void resetAsSomebodyElse()
    {
        const pid_t child = fork();
        if (child == 0) {
            TestClient client;
            const bool refused = (getuid() != 0 || setresuid(65534, 65534, 65534) == 0) && !client.reset() &&
                                 client.state() == VPNClient::VPNERROR && client.errors().size() == 1;
            _exit(refused ? 0 : 1);
        }
        int status = -1;
        QCOMPARE(waitpid(child, &status, 0), child);
        QCOMPARE(status, 0);
    }

    /// What comes up within the last second before the limit is late, too. A new open() closes it first.
    void timesOut()
    {
        TestClient client;
        client.m_timeout = 1200;
        for (const char *profile : {"/hangs", "/late"}) {
            QVERIFY(!client.openWith(VPNClient::OPENVPN, profile) && client.isRunning());
            QCOMPARE(client.messages.last(), QString("[ERROR]Connect to server timeout"));
            QCOMPARE(client.state(), VPNClient::VPNERROR);
        }
        QVERIFY(client.messages.contains("State is 4, trying to close it."));
    }

    /// An open() that was overtaken has failed, whatever became of the one that overtook it.
    void opensAndClosesWhileWaiting()
    {
        TestClient client;
        bool inner = false;
        QTimer::singleShot(200, &client, [&] { inner = client.openWith(VPNClient::OPENVPN, "/up"); });
        QVERIFY(!client.openWith(VPNClient::OPENVPN, "/hangs") && inner);
        QVERIFY(client.messages.contains("State is 2, trying to close it."));
        QCOMPARE(client.errors(), QStringList());
        QCOMPARE(client.state(), VPNClient::CONNECTED);
        QElapsedTimer elapsed;
        elapsed.start();
        QTimer::singleShot(200, &client,
                           [&] { inner = client.close() || client.openWith(VPNClient::OPENVPN, "/up"); });
        QVERIFY(client.close() && elapsed.elapsed() >= 3000 && !inner);
        QCOMPARE(client.errors(), QStringList("[ERROR]Close opened connection failed."));
        QCOMPARE(client.state(), VPNClient::DISCONNECTED);
        QCOMPARE(int(client.type()), -1);
    }

    void stuckWorkerIsTerminated()
    {
        const QList<int> before = owned();
        StuckClient client;
        client.m_timeout = 1200;
        QVERIFY(!client.openWith(VPNClient::OPENVPN) && client.close() && !client.isRunning());
        client.m_agent.reset();
        QTRY_COMPARE(owned(), before);
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
        const QString port = VPNMGRPORT;
        QVERIFY(UpdateValidManagementPort());
        QCOMPARE(VPNMGRPORT, port); // no management socket is left
    }
};

QTEST_GUILESS_MAIN(ClientTest)
#include "ClientTest.moc"
