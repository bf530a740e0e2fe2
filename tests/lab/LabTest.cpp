#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

#include <csignal>

namespace {

constexpr int kLimitMs = 60000;

/// A running lab whose command is a shell that reads what to do from the test.
class Lab
{
public:
    Lab()
    {
        m_shell.setProcessChannelMode(QProcess::MergedChannels);
        m_shell.start(QStringLiteral(KORVAN_SOURCE "/lab/lab"), {"run", "--build", KORVAN_BUILD, "--", "bash"});
    }
    ~Lab()
    {
        m_shell.closeWriteChannel();
        m_shell.waitForFinished(kLimitMs);
    }

    /// What the command prints in the namespace "home", with its exit status as the last line.
    QString run(const QByteArray &command)
    {
        static const QRegularExpression end(QStringLiteral("=(\\d+)=\n$"));
        m_shell.write("{ " + command + "\n} 2>&1 </dev/null; printf '=%d=\\n' $?\n");
        QByteArray output;
        while (!end.match(QString::fromUtf8(output)).hasMatch()) {
            if (!m_shell.waitForReadyRead(kLimitMs)) {
                return QStringLiteral("no answer: ") + QString::fromUtf8(output);
            }
            output += m_shell.readAll();
        }
        return QString::fromUtf8(output).replace(end, QStringLiteral("\\1"));
    }

    /// The lab's process namespace, as /proc names it.
    QString processes() { return run("readlink /proc/self/ns/pid").section('\n', 0, 0); }

    QProcess &process() { return m_shell; }

private:
    QProcess m_shell;
};

/// How many processes of the machine are in the process namespace.
int populationOf(const QString &processNamespace)
{
    int count = 0;
    for (const QString &process : QDir(QStringLiteral("/proc")).entryList({"[0-9]*"}, QDir::Dirs)) {
        count += QFile::symLinkTarget("/proc/" + process + "/ns/pid").endsWith(processNamespace) ? 1 : 0;
    }
    return count;
}

/// What a lab must leave alone on the machine.
QByteArray machineState()
{
    QProcess shell;
    shell.start(QStringLiteral("bash"),
                {"-c", "ip route; ip -6 route; ip rule; ip netns; ip -brief link; cat /etc/hosts /etc/resolv.conf "
                       "/proc/sys/net/ipv4/ip_forward; ls /run"});
    shell.waitForFinished(kLimitMs);
    return shell.readAll();
}

/// Connects with a profile in the background, and waits for the end of the attempt or for the tunnel.
QByteArray connectWith(const QByteArray &profileAndOptions, const QByteArray &thenRun)
{
    return "cd $LAB_PROFILES; out=$LAB_DIR/out; : >$out; openvpn --config " + profileAndOptions +
           " >$out & tunnel=$!; while kill -0 $tunnel 2>/dev/null && ! grep -q 'Sequence Completed' $out; "
           "do sleep .05; done; " +
           thenRun + "; result=$?; kill $tunnel 2>/dev/null; wait $tunnel; (exit $result)";
}

} // namespace

class LabTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void answers_data();
    void answers();
    void comesUpInTime();
    void endsWithTheCommandsStatus();
    void twoAtOnceLeaveNothing_data();
    void twoAtOnceLeaveNothing();
    void cleanupTestCase() { m_lab.reset(); }

private:
    std::unique_ptr<Lab> m_lab;
};

void LabTest::initTestCase()
{
    m_lab = std::make_unique<Lab>();
    QCOMPARE(m_lab->run("true"), QStringLiteral("0"));
}

void LabTest::answers_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QString>("pattern");
    const auto row = [](const char *name, const QByteArray &command, const char *pattern) {
        QTest::newRow(name) << command << QString::fromUtf8(pattern);
    };
    const QByteArray page = "curl -s -m 10 http://ip.korvan.example/testip.php ";
    const QByteArray login = "curl -sk -m 10 https://api.korvan.example/api -d ";
    const QByteArray alice = login + "'username=alice&password=wonderland-7' ";
    const QByteArray order = "curl -s -T /dev/null $LAB_CONTROL/answer";

    row("routes", "ip route", "^default via 198\\.51\\.100\\.1 dev eth0 \n198\\.51\\.100\\.0/24 dev eth0 [^\n]*\n0$");
    row("unknown name fails at once", "timeout 3 getent hosts nobody.example", "^2$");
    row("direct", page, "<h1>You are in Homeland\\? Your IP: 198\\.51\\.100\\.2</h1>");
    row("direct, IPv6", "curl -s -m 10 http://[2001:db8:113::10]/testip.php", "Your IP: 2001:db8:51::2</h1>");
    row("HTTP proxy", page + "-x $LAB_HTTP_PROXY; tail $LAB_DIR/http-proxy.log",
        "Proxyland\\? Your IP: 203\\.0\\.113\\.30<.*ip\\.korvan\\.example");
    row("HTTP proxy, no password", page + "-o /dev/null -w %{http_code} -x $LAB_HTTP_AUTH_PROXY", "^4070$");
    row("HTTP proxy with password",
        page + "-x $LAB_PROXY_USER:$LAB_PROXY_PASSWORD@$LAB_HTTP_AUTH_PROXY; tail $LAB_DIR/http-auth-proxy.log",
        "Proxyland.*ip\\.korvan\\.example");
    row("SOCKS proxy", page + "--socks5-hostname $LAB_SOCKS_PROXY; tail $LAB_DIR/socks-proxy.log",
        "Proxyland.*ip\\.korvan\\.example");
    row("speed-test file", "curl -s http://vpn1.korvan.example:8080/korvantest.dat | wc -c", "^8388608\n0$");
    row("update description", "curl -sk https://portal.korvan.example/update.xml",
        "<system>macos</system>\\s*<version>\\d");

    row("profile", alice + "-o p.zip; unzip -o -q p.zip -d p; diff -r p $LAB_PROFILES; cat p/skiplist.dat p/L2TP.txt",
        "^Examplia-1-TCP\\|.*\\|Password-1Examplia-L2TP-1\\|203[^\n]*\nSamplonia-L2TP-1\\|.*\n0$");
    row("printed certificate", "cat $LAB_PROFILES/alice.crt", "Not After : \\w{3} [ \\d]\\d [\\d:]{8} \\d{4} GMT\n");
    row("odd password", login + "'username=bob&password=a%26b%3Dc%2Bd%20%C3%A9' | head -c 2", "^PK0$");
    row("wrong password", login + "'username=alice&password=x'", "^invalid username or password0$");
    row("lower-case digits", login + "'username=alice&password=wonderland%2d7'", "^malformed request: the form");
    row("blank as +", login + "'username=bob&password=a%26b%3Dc%2Bd+%C3%A9'", "^malformed request: the form");
    row("other content type", alice + "-H 'Content-Type: text/plain'", "^malformed request: Content-Type");
    row("seen", alice + "-o p.zip; curl -s $LAB_CONTROL/seen | tail -1; curl -s $LAB_CONTROL/seen/api",
        "^198\\.51\\.100\\.2 POST /api\nPOST /api HTTP/1\\.1\r\n.*\r\n\r\nusername=alice&password=wonderland-70$");

    row("own body", "echo 'so: invalid username or password.' | curl -s -T - $LAB_CONTROL/answer/api; " + alice,
        "^so: invalid username or password\\.\n0$");
    row("reset", order + "/api?reset; " + alice, "^56$");
    row("empty", order + "/api?empty; " + alice, "^0$");
    row("truncated", order + "/api?keep=500; " + alice + "-o p.zip; wc -c <p.zip; unzip -tq p.zip", "^500\n.*\n9$");
    row("broken off", order + "/api?break=500; " + alice + "-o p.zip", "^18$");
    row("stall", order + "/api?stall=12; " + alice + "-m 1", "^28$");
    row("once", order + "'/api?empty&times=1'; " + alice + "; " + alice + "| head -c 2", "^PK0$");
    row("status", order + "/api?status=503; " + alice + "-o p.zip -w %{http_code}", "^5030$");
    row("bad order", order + "'/api?times=x'", "^bad parameter: times=x\n0$");
    row("published archive",
        "head -c 9000000 /dev/urandom >a; curl -s -T a $LAB_CONTROL/answer/archives/a.zip; "
        "curl -sk https://portal.korvan.example/archives/a.zip | cmp - a",
        "^0$");

    row("tunnel over UDP", connectWith("Examplia-1.ovpn", "ip route; " + page),
        "0\\.0\\.0\\.0/1 via 198\\.18\\.1\\.1 dev tun.*Examplia\\? Your IP: 198\\.18\\.1\\.2<.*\n0$");
    row("tunnel over TCP", connectWith("Samplonia-Surfing-1-TCP.ovpn", page),
        "Samplonia\\? Your IP: 198\\.18\\.13\\.2");
    row("orders reach the service through a tunnel",
        connectWith("Examplia-1.ovpn", "ip route del default; " + order + "/testip.php?keep=5; " + page +
                                           "; ip route add default via 198.51.100.1"),
        "^<html0$");
    row("proxied", connectWith("Proxied-Samplonia.ovpn", page + "; " + page + "--socks5-hostname 198.18.4.1:1080"),
        "Homeland.*Samplonia\\? Your IP: 203\\.0\\.113\\.24");
    row("tunnel through the HTTP proxy",
        "printf '%s\\r\\n' $LAB_PROXY_USER $LAB_PROXY_PASSWORD >/run/proxy; " +
            connectWith("Examplia-1-TCP.ovpn --http-proxy ${LAB_HTTP_AUTH_PROXY/:/ } /run/proxy", page),
        "Examplia\\? Your IP: 198\\.18\\.11\\.2");
    row("tunnel through the SOCKS proxy",
        connectWith("Examplia-1-TCP.ovpn --socks-proxy ${LAB_SOCKS_PROXY/:/ }", page), "Your IP: 198\\.18\\.11\\.2");
    row("rejected certificate", connectWith("Rejecting-1.ovpn", "tail -2 $out"), "connect-retry-max .* unsuccessful");
    row("checked password",
        "printf 'bob\\na&b=c+d é\\n' >/run/good; " + connectWith("Password-1.ovpn --auth-user-pass /run/good", page),
        "Your IP: 198\\.18\\.24\\.2");
    row("rejected password",
        "printf 'bob\\nx\\n' >/run/bad; " + connectWith("Password-1.ovpn --auth-user-pass /run/bad", "tail -2 $out"),
        "AUTH_FAILED");
    row("vanished server",
        "$LAB ctl vanish Examplia-1; " + connectWith("Examplia-1.ovpn", "tail -3 $out") +
            "; $LAB ctl appear Examplia-1; " + connectWith("Examplia-1.ovpn", "true"),
        "unsuccessful.*\n0$");
    row("stopped server",
        "$LAB ctl stop Examplia-1-TCP; " + connectWith("Examplia-1-TCP.ovpn", "tail -3 $out") +
            "; $LAB ctl start Examplia-1-TCP; " + connectWith("Examplia-1-TCP.ovpn", page),
        "unsuccessful.*198\\.18\\.11\\.2");
}

void LabTest::answers()
{
    QFETCH(QByteArray, command);
    QFETCH(QString, pattern);
    const QString output = m_lab->run("cd $LAB_DIR; " + command);
    const QRegularExpression expected(pattern, QRegularExpression::DotMatchesEverythingOption);
    QVERIFY2(expected.match(output).hasMatch(), qPrintable(output));
    QVERIFY(m_lab->run("curl -sf -d '' $LAB_CONTROL/reset").endsWith('0'));
}

void LabTest::comesUpInTime()
{
    const int milliseconds = m_lab->run("echo $LAB_UP_MS").section('\n', 0, 0).toInt();
    qInfo("the lab came up in %d ms", milliseconds);
    QVERIFY(milliseconds > 0 && milliseconds < 5000);
}

void LabTest::endsWithTheCommandsStatus()
{
    Lab lab;
    QVERIFY(lab.run("true").endsWith('0'));
    lab.process().write("exit 7\n");
    QVERIFY(lab.process().waitForFinished(kLimitMs));
    QCOMPARE(lab.process().exitCode(), 7);
}

void LabTest::twoAtOnceLeaveNothing_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("end of the command") << 0;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGKILL") << SIGKILL;
}

void LabTest::twoAtOnceLeaveNothing()
{
    QFETCH(int, signal);
    const QByteArray before = machineState();
    Lab labs[2];
    QString names[2];
    for (int i : {0, 1}) {
        names[i] = labs[i].processes();
        QVERIFY2(populationOf(names[i]) > 10, qPrintable(names[i]));
        QVERIFY(labs[i].run("rm /etc/hosts; ip link del eth0").endsWith('0'));
    }
    QVERIFY(names[0] != names[1]);
    for (int i : {0, 1}) {
        if (signal == 0) {
            labs[i].process().closeWriteChannel();
        } else {
            ::kill(static_cast<pid_t>(labs[i].process().processId()), signal);
        }
    }
    for (int i : {0, 1}) {
        QTRY_COMPARE_WITH_TIMEOUT(labs[i].process().state(), QProcess::NotRunning, kLimitMs);
        QTRY_COMPARE_WITH_TIMEOUT(populationOf(names[i]), 0, kLimitMs);
    }
    QCOMPARE(machineState(), before);
}

int main(int argc, char **argv)
{
    if (!canUseLab()) {
        return 0;
    }
    QCoreApplication application(argc, argv);
    LabTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "LabTest.moc"
