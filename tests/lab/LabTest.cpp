#include "tests/support/TestFiles.h"

#include <QProcess>
#include <QtTest>

#include <csignal>

static const QString kLab = KORVAN_SOURCE "/lab/lab";

static QByteArray shell(const QByteArray &command)
{
    QProcess bash;
    bash.start("bash", {"-c", command});
    bash.waitForFinished(60000);
    return bash.readAll();
}

/// What a lab must leave alone on the machine.
static QByteArray machineState()
{
    return shell("ip route; ip -6 route; ip rule; ip netns; ip -brief link; cat /etc/hosts /etc/resolv.conf "
                 "/proc/sys/net/ipv4/ip_forward; ls /run");
}

class LabTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!canUseLab()) {
            QSKIP("NEEDS ROOT", "");
        }
    }

    void refusesMalformedLogins()
    {
        QCOMPARE(shell(kLab.toUtf8() + " run --build " KORVAN_BUILD R"sh( -- bash <<'END'
                    login() {
                        curl -sk https://api.korvan.example/api -d "username=alice&password=wonderland$@" |
                            grep -aoE '^(malformed request: (the form|Content-Type)|PK)'
                    }
                    login %2d7
                    login +7
                    login -7 -H 'Content-Type: text/plain'
                    login -7
                    exit 7
END
                    echo $?)sh"),
                 QByteArray("malformed request: the form\nmalformed request: the form\n"
                            "malformed request: Content-Type\nPK\n7\n"));
    }

    void twoAtOnceLeaveNothing()
    {
        for (const int signal : {0, SIGTERM, SIGKILL}) { // 0: the end of the command
            const QByteArray before = machineState();
            QProcess labs[2];
            QByteArrayList namespaces;
            for (QProcess &lab : labs) {
                lab.start(kLab, {"run", "--build", KORVAN_BUILD, "--", "bash", "-c",
                                 "rm /etc/hosts; ip link del eth0; stat -Lc %i /proc/self/ns/pid; read"});
            }
            for (QProcess &lab : labs) {
                QTRY_VERIFY_WITH_TIMEOUT(lab.canReadLine(), 60000);
                namespaces += lab.readLine().trimmed();
            }
            const QByteArray count = "lsns -t pid -no NS | grep -cE '" + namespaces.join('|') + "'";
            QCOMPARE(shell(count), QByteArray("2\n"));
            for (QProcess &lab : labs) {
                signal == 0 ? lab.closeWriteChannel() : void(kill(pid_t(lab.processId()), signal));
                QTRY_COMPARE_WITH_TIMEOUT(lab.state(), QProcess::NotRunning, 60000);
            }
            QTRY_COMPARE_WITH_TIMEOUT(shell(count), QByteArray("0\n"), 60000);
            QCOMPARE(machineState(), before);
        }
    }
};

QTEST_GUILESS_MAIN(LabTest)
#include "LabTest.moc"
