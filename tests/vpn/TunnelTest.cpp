#include "common/AppPath.h"
#include "platform/Tool.h"
#include "tests/support/TestFiles.h"
#include "tests/vpn/TestClient.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTest>

#include <csignal>

static const QString kUser = QStringLiteral("a-name-like-no-other");
static const QString kPassword = QString::fromUtf8("pass \"wörd\" like\\no other");

static QString run(const QString &command)
{
    const ToolResult result = runTool("bash", {"-c", command}, 60000);
    return QString::fromUtf8(result.output + result.errors);
}

static bool openTo(TestClient &client, const QString &server, const QString &user = {}, const QString &password = {})
{
    const QString folder = appPath("/cfg/OpenVPN/");
    QFile::remove(folder + "temp");
    QFile::copy(folder + server + ".ovpn", folder + "temp");
    VPNClient::OPTION option;
    option.type = VPNClient::OPENVPN;
    option.user = user;
    option.password = password;
    option.config = "/cfg/OpenVPN/temp";
    option.params = "|--cd|" + folder;
    return client.open(option);
}

/// All that a tunnel changes on the machine.
static QString network()
{
    return run("ip route; ip rule; ip -6 route | grep -v fe80; nft list ruleset; cat /etc/resolv.conf");
}

static bool isGone(qint64 pid)
{
    return pid > 0 && run(QString("grep State: /proc/%1/status").arg(pid)).indexOf(QRegExp("State:\\s+[^ZX]")) < 0;
}

/// The engine and the shipped helpers against real OpenVPN servers. It runs in a lab.
class TunnelTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void carriesTraffic_data();
    void carriesTraffic();
    void failsToConnect_data();
    void failsToConnect();
    void serverThatVanishes();
    void cancel();
    void tenInARow();
    void killedClient();
    void killedTunnel();
    void promptedCredentials();

private:
    QString m_before;
};

void TunnelTest::initTestCase()
{
    for (const QString &helper : QStringList({"/compose", "/up.sh", "/down.sh"})) {
        QFile::remove(appPath(helper));
        QVERIFY(QFile::copy(KORVAN_BUNDLE + helper, appPath(helper)));
    }
    const QDir profiles(qEnvironmentVariable("LAB_PROFILES"));
    for (const QString &name : profiles.entryList(QDir::Files)) {
        putFile(appPath("/cfg/OpenVPN/") + name, fileBytes(profiles.filePath(name)));
    }
    m_before = network();
}

void TunnelTest::cleanup()
{
    QTRY_COMPARE_WITH_TIMEOUT(network(), m_before, 20000);
}

void TunnelTest::carriesTraffic_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("network");
    QTest::newRow("UDP") << "Examplia-1"
                         << "198.18.1.";
    QTest::newRow("TCP") << "Examplia-1-TCP"
                         << "198.18.11.";
}

/// The counts are within 10 % of what the tunnel carried: its packets have headers of their own.
void TunnelTest::carriesTraffic()
{
    QFETCH(QString, server);
    QFETCH(QString, network);
    TestClient client;
    QVERIFY2(openTo(client, server), qPrintable(client.messages.join('\n')));
    const QString routes = run("ip route");
    QVERIFY2(routes.contains("0.0.0.0/1 via " + network) && routes.contains("128.0.0.0/1 via "), qPrintable(routes));
    QVERIFY(run("curl -s -m 10 http://ip.korvan.example/testip.php").contains("Your IP: " + network));
    const double size = 8 << 20;
    const QString server2 = "http://vpn2.korvan.example:8080/";
    QCOMPARE(run("curl -s -m 50 " + server2 + "korvantest.dat | wc -c").trimmed().toDouble(), size);
    run("head -c 8388608 /dev/zero | curl -s -m 50 -T - " + server2 + "upload");
    const auto within = [&](int field, const QString &direction) {
        const double counted = client.counts().section('/', field, field).toDouble();
        const double carried = run("cat /sys/class/net/tun*/statistics/" + direction + "_bytes").toDouble();
        return counted > size && carried > size && qAbs(counted / carried - 1) < 0.1;
    };
    QTRY_VERIFY_WITH_TIMEOUT(within(0, "rx") && within(1, "tx"), 10000);
    QVERIFY(client.close());
}

void TunnelTest::failsToConnect_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("error");
    QTest::newRow("certificate") << "Rejecting-1"
                                 << ""
                                 << "[ERROR]vpn connect error, please check log";
    QTest::newRow("password") << "Password-1"
                              << "wrong"
                              << "[ERROR]username or password is not matched.";
}

void TunnelTest::failsToConnect()
{
    QFETCH(QString, server);
    QFETCH(QString, password);
    QFETCH(QString, error);
    TestClient client;
    QVERIFY(!openTo(client, server, password.isEmpty() ? "" : "alice", password));
    QTRY_COMPARE_WITH_TIMEOUT(client.errors(), QStringList(error), 20000);
    QCOMPARE(client.state(), VPNClient::VPNERROR);
    QVERIFY(!client.close());
}

void TunnelTest::serverThatVanishes()
{
    TestClient client;
    QVERIFY(openTo(client, "Examplia-2-Routed"));
    run("$LAB ctl vanish Examplia-2-Routed");
    QTRY_COMPARE_WITH_TIMEOUT(client.errors(), QStringList("[ERROR]openvpn error, please check log"), 30000);
    run("$LAB ctl appear Examplia-2-Routed");
    QCOMPARE(client.state(), VPNClient::VPNERROR);
}

void TunnelTest::cancel()
{
    run("$LAB ctl vanish Samplonia-Surfing-1");
    TestClient client;
    qint64 pid = 0;
    QTimer::singleShot(1000, &client, [&] {
        pid = client.m_process->processId();
        client.close();
    });
    QVERIFY(!openTo(client, "Samplonia-Surfing-1"));
    run("$LAB ctl appear Samplonia-Surfing-1");
    QCOMPARE(client.errors(), QStringList());
    QCOMPARE(client.state(), VPNClient::DISCONNECTED);
    QVERIFY(isGone(pid));
}

void TunnelTest::tenInARow()
{
    TestClient client;
    QStringList times;
    for (int i = 0; i < 10; ++i) {
        QElapsedTimer elapsed;
        elapsed.start();
        QVERIFY2(openTo(client, i % 2 == 0 ? "Examplia-1" : "Samplonia-Surfing-1-TCP"),
                 qPrintable(client.messages.join('\n')));
        times << QString::number(elapsed.elapsed());
        QVERIFY(client.close());
    }
    qInfo("connected in %s ms", qPrintable(times.join(' ')));
    QCOMPARE(client.errors(), QStringList());
}

/// A client of its own process, which main() makes.
void TunnelTest::killedClient()
{
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(), {"--hold", "Examplia-1"});
    QVERIFY(other.waitForReadyRead(60000));
    const qint64 pid = other.readLine().toLongLong();
    QVERIFY(pid > 0 && !isGone(pid));
    QVERIFY(network() != m_before);
    other.kill();
    QElapsedTimer elapsed;
    elapsed.start();
    QTRY_VERIFY_WITH_TIMEOUT(isGone(pid), 10000);
    qInfo("OpenVPN was gone after %lld ms", elapsed.elapsed());
    QVERIFY(elapsed.elapsed() < 2000);
    other.waitForFinished();
}

void TunnelTest::killedTunnel()
{
    TestClient client;
    QVERIFY(openTo(client, "Examplia-1"));
    QElapsedTimer elapsed;
    qint64 reported = -1;
    connect(&client, &VPNClient::vpnerror, &client, [&] { reported = elapsed.elapsed(); });
    elapsed.start();
    kill(static_cast<pid_t>(client.m_process->processId()), SIGKILL);
    QTRY_VERIFY_WITH_TIMEOUT(reported >= 0, 10000);
    QCOMPARE(client.errors(), QStringList("[ERROR]openvpn error, please check log"));
    qInfo("reported after %lld ms", reported);
    QVERIFY(reported < 200);
    QTRY_VERIFY(client.isFinished());
}

/// The server takes them as they were typed, and nobody else sees them.
void TunnelTest::promptedCredentials()
{
    QFile users(qEnvironmentVariable("LAB_DIR") + "/users");
    QVERIFY(users.open(QIODevice::Append));
    users.write((kUser + '\t' + kPassword + '\n').toUtf8());
    users.close();
    TestClient client;
    QVERIFY2(openTo(client, "Password-1", kUser, kPassword), qPrintable(client.messages.join('\n')));
    QByteArray commandLines;
    for (const QString &process : QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs)) {
        commandLines += fileBytes("/proc/" + process + "/cmdline");
    }
    QVERIFY(commandLines.contains("--auth-user-pass"));
    const QString found =
        run("grep -srlaF -e 'like-no-other' -e 'like\\no other' /run /etc /dev/shm /tmp/openvpn* '" +
            appPath("/cfg") + "' | grep -v /run/lab/");
    for (const QString &secret : {kUser, kPassword}) {
        QVERIFY(!commandLines.contains(secret.toUtf8()));
        QVERIFY(!client.messages.join(QString()).contains(secret));
    }
    QCOMPARE(found, QString());
    QVERIFY(client.close());
}

int main(int argc, char **argv)
{
    qputenv("LC_ALL", "C.UTF-8");
    QCoreApplication application(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--hold") == 0) {
        TestClient client;
        const bool up = openTo(client, argv[2]);
        std::printf("%lld\n", up ? client.m_process->processId() : 0);
        std::fflush(stdout);
        return application.exec();
    }
    TunnelTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "TunnelTest.moc"
