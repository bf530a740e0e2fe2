#include "tests/support/TestFiles.h"

#include <QProcess>
#include <QtTest>

#include <csignal>

static constexpr int kLimitMs = 60000;

/// A running lab.
struct Lab : QProcess
{
    /// The command is a line of bash.
    explicit Lab(const QByteArray &command)
    {
        setProcessChannelMode(QProcess::MergedChannels);
        start(KORVAN_SOURCE "/lab/lab", {"run", "--build", KORVAN_BUILD, "--", "bash", "-c", command});
    }

    /// Whether it comes to have printed so many lines.
    bool hasPrinted(int lines)
    {
        while (output.count('\n') < lines && waitForReadyRead(kLimitMs)) {
            output += readAll();
        }
        return output.count('\n') >= lines;
    }

    QByteArray output;
};

/// Whether the machine has processes in that process namespace.
static bool hasProcesses(const QByteArray &processNamespace)
{
    return QProcess::execute("bash", {"-c", "lsns -t pid -no NS | grep -q " + processNamespace}) == 0;
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
    /// What the tests of the client rely on without seeing it; and the status of the command is the lab's.
    void answers()
    {
        Lab lab(R"sh(
            login() { curl -sk -m 10 https://api.korvan.example/api -d "username=alice&password=wonderland$1" "${@:2}"; }
            order() { curl -s -T /dev/null "$LAB_CONTROL/answer/api?$1"; }
            exec 2>&1
            timeout 3 getent hosts nobody.example; echo "fails at once: $?"
            curl -s -m 10 'http://[2001:db8:113::10]/testip.php' | grep -o 'Your IP: [0-9a-f:]*'
            curl -s -m 10 http://ip.korvan.example -o /dev/null -w '%{http_code}\n' -x $LAB_HTTP_AUTH_PROXY
            curl -s http://vpn1.korvan.example:8080/korvantest.dat | wc -c
            login %2d7 | head -c 27; echo ' for digits in lower case'
            login +7 | head -c 27; echo ' for a blank as +'
            login -7 -H 'Content-Type: text/plain' | head -c 31; echo
            order 'empty&times=1'; login -7; login -7 | head -c 2; echo ' at the second time'
            order times=x
            exit 7)sh");
        QVERIFY(lab.waitForFinished(kLimitMs));
        QCOMPARE(QString::fromUtf8(lab.readAll()), QString("fails at once: 2\n"
                                                           "Your IP: 2001:db8:51::2\n"
                                                           "407\n"
                                                           "8388608\n"
                                                           "malformed request: the form for digits in lower case\n"
                                                           "malformed request: the form for a blank as +\n"
                                                           "malformed request: Content-Type\n"
                                                           "PK at the second time\n"
                                                           "bad parameter: times=x\n"));
        QCOMPARE(lab.exitCode(), 7);
    }

    void twoAtOnceLeaveNothing()
    {
        for (const int signal : {0, SIGTERM, SIGKILL}) { // 0: the end of the command
            const QByteArray before = machineState();
            const QByteArray command = "rm /etc/hosts; ip link del eth0; stat -Lc %i /proc/self/ns/pid; read";
            Lab labs[] = {Lab(command), Lab(command)};
            for (Lab &lab : labs) {
                QVERIFY(lab.hasPrinted(1));
                QVERIFY2(hasProcesses(lab.output.trimmed()), lab.output.constData());
            }
            QVERIFY(labs[0].output != labs[1].output);
            for (Lab &lab : labs) {
                signal == 0 ? lab.closeWriteChannel() : void(kill(pid_t(lab.processId()), signal));
            }
            for (Lab &lab : labs) {
                QTRY_COMPARE_WITH_TIMEOUT(lab.state(), QProcess::NotRunning, kLimitMs);
                QTRY_VERIFY_WITH_TIMEOUT(!hasProcesses(lab.output.trimmed()), kLimitMs);
            }
            QCOMPARE(machineState(), before);
        }
    }
};

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
