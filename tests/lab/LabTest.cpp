#include "tests/support/TestFiles.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

#include <csignal>

static constexpr int kLimitMs = 60000;

/// A running lab whose command is a shell that reads what to do from the test.
class Lab
{
public:
    Lab()
    {
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(KORVAN_SOURCE "/lab/lab", {"run", "--build", KORVAN_BUILD, "--", "bash"});
    }
    ~Lab()
    {
        process.closeWriteChannel();
        process.waitForFinished(kLimitMs);
    }

    /// What the command prints in the namespace "home", with its exit status behind it.
    QString run(const QByteArray &command)
    {
        static const QRegularExpression end(QStringLiteral("=(\\d+)=\n$"));
        process.write("{ " + command + "\n} 2>&1 </dev/null; printf '=%d=\\n' $?\n");
        QString output;
        while (!end.match(output).hasMatch()) {
            if (!process.waitForReadyRead(kLimitMs)) {
                return "no answer: " + output;
            }
            output += QString::fromUtf8(process.readAll());
        }
        return output.replace(end, "\\1");
    }

    QProcess process;
};

/// How many processes of the machine are in that process namespace.
static int populationOf(const QString &processNamespace)
{
    int count = 0;
    for (const QString &process : QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs)) {
        count += QFile::symLinkTarget("/proc/" + process + "/ns/pid").endsWith(processNamespace) ? 1 : 0;
    }
    return count;
}

/// What a lab must leave alone on the machine.
static QByteArray machineState()
{
    QProcess shell;
    shell.start("bash", {"-c", "ip route; ip -6 route; ip rule; ip netns; ip -brief link; cat /etc/hosts "
                               "/etc/resolv.conf /proc/sys/net/ipv4/ip_forward; ls /run"});
    shell.waitForFinished(kLimitMs);
    return shell.readAll();
}

class LabTest : public QObject
{
    Q_OBJECT

private slots:
    void answers();
    void twoAtOnceLeaveNothing();
};

/// What the tests of the client rely on without seeing it; and the status of the command is the lab's.
void LabTest::answers()
{
    const QByteArray page = "curl -s -m 10 http://ip.korvan.example/testip.php ";
    const QByteArray alice = "curl -sk -m 10 https://api.korvan.example/api -d 'username=alice&password=wonderland";
    const struct
    {
        QByteArray command;
        const char *pattern;
    } cases[] = {
        {"timeout 3 getent hosts nobody.example", "^2$"},
        {"curl -s -m 10 http://[2001:db8:113::10]/testip.php", "Your IP: 2001:db8:51::2</h1>"},
        {page + "-o /dev/null -w %{http_code} -x $LAB_HTTP_AUTH_PROXY", "^4070$"},
        {"curl -s http://vpn1.korvan.example:8080/korvantest.dat | wc -c", "^8388608\n0$"},
        {alice + "%2d7'", "^malformed request: the form"}, // lower-case digits
        {alice + "+7'", "^malformed request: the form"},   // a blank as +
        {alice + "-7' -H 'Content-Type: text/plain'", "^malformed request: Content-Type"},
        {"curl -s -T /dev/null $LAB_CONTROL/answer'/api?empty&times=1'; " + alice + "-7'; " + alice +
             "-7' | head -c 2",
         "^PK0$"},
        {"curl -s -T /dev/null $LAB_CONTROL/answer'/api?times=x'", "^bad parameter: times=x\n0$"},
    };
    Lab lab;
    for (const auto &[command, pattern] : cases) {
        const QString output = lab.run(command);
        QVERIFY2(output.contains(QRegularExpression(pattern)), qPrintable(command + ": " + output));
    }
    qInfo("the lab came up in %d ms", lab.run("echo $LAB_UP_MS").section('\n', 0, 0).toInt());
    lab.process.write("exit 7\n");
    QVERIFY(lab.process.waitForFinished(kLimitMs));
    QCOMPARE(lab.process.exitCode(), 7);
}

void LabTest::twoAtOnceLeaveNothing()
{
    for (const int signal : {0, SIGTERM, SIGKILL}) { // 0: the end of the command
        const QByteArray before = machineState();
        Lab labs[2];
        QStringList names;
        for (Lab &lab : labs) {
            names += lab.run("readlink /proc/self/ns/pid").section('\n', 0, 0);
            QVERIFY2(populationOf(names.last()) > 10, qPrintable(names.last()));
            QVERIFY(lab.run("rm /etc/hosts; ip link del eth0").endsWith('0'));
        }
        QVERIFY(names.first() != names.last());
        for (Lab &lab : labs) {
            signal == 0 ? lab.process.closeWriteChannel() : void(kill(pid_t(lab.process.processId()), signal));
        }
        for (int i : {0, 1}) {
            QTRY_COMPARE_WITH_TIMEOUT(labs[i].process.state(), QProcess::NotRunning, kLimitMs);
            QTRY_COMPARE_WITH_TIMEOUT(populationOf(names.at(i)), 0, kLimitMs);
        }
        QCOMPARE(machineState(), before);
    }
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
