#include "common/AppPath.h"
#include "tests/support/TestFiles.h"
#include "tests/vpn/TestClient.h"
#include "vpn/ManagementPort.h"

#include <QDir>
#include <QTest>

#include <sys/wait.h>
#include <unistd.h>

/// A worker that looks at nothing, with a helper at work.
class StuckClient : public TestClient
{
public:
    std::atomic<qint64> pid{0};

protected:
    // The sanitizers stand a thread's being cancelled only outside a sleep, and in a function without locals.
    void run() override
    {
        startSleep();
        for (;;) {
            setTerminationEnabled(false);
            msleep(10);
            setTerminationEnabled(true);
        }
    }

private:
    void startSleep()
    {
        m_process->start("sleep", {"60"});
        m_process->waitForStarted();
        pid = m_process->processId();
    }
};

/// The numbers of this process's descriptors, threads and children.
static QList<int> owned()
{
    const auto entries = [](const char *folder) {
        return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    };
    const QByteArray children = fileBytes(QString("/proc/self/task/%1/children").arg(getpid()));
    return {entries("/proc/self/fd").size(), entries("/proc/self/task").size(), children.count(' ')};
}

/// The client as its owner sees it: states, refusals, set-up, waits, and what it leaves behind.
class ClientTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void statesAndCounts();
    void refusals();
    void setupHelper_data();
    void setupHelper();
    void resetAsRootAndAsSomebodyElse();
    void timesOut();
    void opensAndClosesWhileWaiting();
    void stuckWorkerIsTerminated();
    void nothingIsLeftBehind();
};

void ClientTest::init()
{
    putScript(appPath("/compose"),
              "up='echo Initialization Sequence Completed'\ncase $2 in */up) $up ;;\n*/late) sleep "
              "0.4; $up ;;\n*/drops) $up; exit ;;\n*/dies) exit ;;\nesac\nexec sleep 60\n");
    putScript(appPath("/down.sh"), "");
}

void ClientTest::statesAndCounts()
{
    TestClient client;
    QCOMPARE(client.counts(), QString("0/0"));
    quint64 received = 5;
    quint64 sent = 0;
    client.byteCount(received, sent);
    QCOMPARE(client.counts(), QString("5/0"));
    connect(&client, &VPNClient::disconnected, [&] { client.states << "disconnected"; });
    connect(&client, &VPNClient::disconnecting, [&] { client.states << "disconnecting"; });
    connect(&client, &VPNClient::connecting, [&] { client.states << "connecting"; });
    connect(&client, &VPNClient::connected, [&] { client.states << "connected"; });
    connect(&client, &VPNClient::vpnerror, [&] { client.states << "vpnerror"; });
    for (int s : {0, 2, 2, 3, 4, 9, 1, 0}) {
        client.setState(VPNClient::STATE(s));
    }
    QCOMPARE(client.states.join(' '),
             QString("2 connecting 3 connected 4 vpnerror 9 1 disconnecting 0 disconnected"));
}

void ClientTest::refusals()
{
    TestClient client;
    for (int type : {-2147483647, -1, 5}) {
        QVERIFY(!client.setup({VPNClient::TYPE(type), "", "", ""}));
        QVERIFY(!client.unsetup({VPNClient::TYPE(type), "", "", ""}));
        QVERIFY(!client.close());
        QVERIFY(client.messages.isEmpty());
        QVERIFY(!client.openWith(type));
        QCOMPARE(client.messages.takeLast(), QString("[ERROR]Type is not valid."));
        QVERIFY(client.states.isEmpty());
    }
    client.setState(VPNClient::CONNECTED);
    QVERIFY(!client.openWith(VPNClient::OPENVPN));
    QCOMPARE(client.messages.join('|'),
             QString("State is 3, trying to close it.|[ERROR]Close opened connection failed."));
    client.setState(VPNClient::DISCONNECTED);
    for (const QString &text : QStringList({"a\nb", "a\r"})) { // the rest would answer the next prompt
        QVERIFY(!client.openWith(VPNClient::OPENVPN, "/up", text));
        QVERIFY(!client.openWith(VPNClient::OPENVPN, "/up", "user", text));
        QCOMPARE(client.messages.last(), QString("[ERROR]username or password is not matched."));
    }
    QFile::remove(appPath("/compose"));
    QVERIFY(!client.openWith(VPNClient::OPENVPN));
    QCOMPARE(client.messages.last(), QString("[ERROR]openvpn compose is missed."));
    QCOMPARE(client.state(), VPNClient::VPNERROR);
}

void ClientTest::setupHelper_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("setup");
    QTest::addColumn<QString>("helper"); // null: there is none
    QTest::addColumn<QString>("messages");
    const auto row = [](const char *name, int type, bool setup, const char *helper, const char *messages) {
        QTest::newRow(name) << type << setup << QString(helper) << QString(messages);
    };
    const char *args = "echo \"$*:Success\"";
    row("openvpn", 0, true, nullptr, "Checking installed tap/tun driver...|Install tap/tun driver done.");
    row("sstp", 3, true, nullptr, "Setup local driver done.");
    row("l2tp, never the caller's key", 2, true, args,
        "Checking local settings...|L2TP Korvan-L2TP host mellowfinch:Success\n|Setup local driver done.");
    row("fails", 1, true, "echo $* >&2",
        "Checking local settings...|PPTP Korvan-PPTP host\n|[ERROR]Setup local driver failed.");
    row("hangs", 1, true, "exec sleep 60", "Checking local settings...||[ERROR]Setup local driver failed.");
    row("no helper", 4, true, nullptr, "[ERROR]Compose is not exist.");
    row("removed", 3, false, args, "Remove local driver...|SSTP Korvan-SSTP:Success\n|Remove local driver done.");
    row("remove fails", 4, false, "exit", "Remove local driver...||[ERROR]Remove local driver failed.");
    row("remove without helper", 4, false, nullptr, nullptr);
}

void ClientTest::setupHelper()
{
    QFETCH(int, type);
    QFETCH(bool, setup);
    QFETCH(QString, helper);
    QFETCH(QString, messages);
    QFile::remove(appPath("/compose4"));
    if (!helper.isNull()) {
        putScript(appPath("/compose4"), helper.toUtf8());
    }
    TestClient client;
    client.m_timeout = 1000;
    const VPNClient::SETUP what(VPNClient::TYPE(type), "update", "host", "the caller's key");
    QCOMPARE(setup ? client.setup(what) : client.unsetup(what), messages.contains("done."));
    QCOMPARE(client.messages.join('|'), messages);
    QCOMPARE(client.state() == VPNClient::VPNERROR, messages.contains("driver failed."));
}

void ClientTest::resetAsRootAndAsSomebodyElse()
{
    const pid_t child = fork();
    if (child == 0) {
        TestClient client;
        const bool asRoot =
            getuid() != 0 ||
            (client.reset() && client.messages.join('|') == "Unload tap driver success.|Unload tun driver success." &&
             setresuid(65534, 65534, 65534) == 0);
        const bool refused =
            !client.reset() && client.state() == VPNClient::VPNERROR &&
            client.messages.last() == "[ERROR]Secure failed, you must run me as root at least one time";
        _exit(asRoot && refused ? 0 : 1);
    }
    int status = -1;
    QCOMPARE(waitpid(child, &status, 0), child);
    QCOMPARE(status, 0);
}

/// What comes up within the last second before the limit is late, too. A new open() closes it first.
void ClientTest::timesOut()
{
    TestClient client;
    client.m_timeout = 1200;
    for (const char *profile : {"/hangs", "/late"}) {
        QVERIFY(!client.openWith(VPNClient::OPENVPN, profile));
        QCOMPARE(client.messages.last(), QString("[ERROR]Connect to server timeout"));
        QCOMPARE(client.state(), VPNClient::VPNERROR);
        QVERIFY(client.isRunning());
    }
    QVERIFY(client.messages.contains("State is 4, trying to close it."));
}

/// An open() that was overtaken has failed, whatever became of the one that overtook it.
void ClientTest::opensAndClosesWhileWaiting()
{
    TestClient client;
    bool inner = false;
    QTimer::singleShot(200, &client, [&] { inner = client.openWith(VPNClient::OPENVPN, "/up"); });
    QVERIFY(!client.openWith(VPNClient::OPENVPN, "/hangs"));
    QVERIFY(inner);
    QVERIFY(client.messages.contains("State is 2, trying to close it."));
    QCOMPARE(client.errors(), QStringList());
    QCOMPARE(client.state(), VPNClient::CONNECTED);
    QElapsedTimer elapsed;
    elapsed.start();
    QTimer::singleShot(200, &client, [&] { inner = client.close() || client.openWith(VPNClient::OPENVPN, "/up"); });
    QVERIFY(client.close());
    QVERIFY(elapsed.elapsed() >= 3000);
    QVERIFY(!inner);
    QCOMPARE(client.errors(), QStringList("[ERROR]Close opened connection failed."));
    QCOMPARE(client.state(), VPNClient::DISCONNECTED);
    QCOMPARE(int(client.type()), -1);
}

void ClientTest::stuckWorkerIsTerminated()
{
    const QList<int> before = owned();
    StuckClient client;
    client.m_timeout = 1200;
    QVERIFY(!client.openWith(VPNClient::OPENVPN));
    QVERIFY(client.close());
    QVERIFY(!client.isRunning());
    QVERIFY(client.pid != 0 && !QFile::exists(QString("/proc/%1/stat").arg(client.pid)));
    QCOMPARE(client.messages.last(), QString("worker thread is killed.\n"));
    client.m_agent.reset();
    QTRY_COMPARE(owned(), before);
}

/// 100 connections, of which a third is closed: all at once, each close() in the event loop of the one before.
void ClientTest::nothingIsLeftBehind()
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

QTEST_GUILESS_MAIN(ClientTest)
#include "ClientTest.moc"
