#include "tests/support/Shell.h"
#include "tests/support/TestFiles.h"

#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

#include <unistd.h>

static const QString kTool = KORVAN_BUNDLE "/compose4";
static const QString kProfile = "/run/NetworkManager/system-connections/Korvan-L2TP.nmconnection";
static const QString kSetUp = "L2TP|Korvan-L2TP|%1.example|mellowfinch", kHangUp = "Korvan-L2TP";
static const QString kCheck = "CHECK|Korvan-L2TP";

class Compose4Test : public QObject
{
    Q_OBJECT

    /// Runs the helper under a tracer, once for each text of arguments, which are separated by "|"; those behind "-"
    /// it gets on standard input. Returns all that it says. No program but the helper itself, where it is called with
    /// them, may be started with a secret among its arguments.
    static QByteArray compose4(const QStringList &calls)
    {
        QByteArray said;
        for (const QString &call : calls) {
            const bool isHidden = call.startsWith("-|");
            const QString tool = "strace -f -s999 -etrace=execve -o/run/trace " + kTool;
            const QByteArray output = runShell("/", (isHidden ? tool + " -" : "xargs -0 " + tool) + " 2>&1 || echo !",
                                               call.toUtf8().mid(isHidden ? 2 : 0).replace('|', '\0') + '\0');
            const QByteArray trace = fileBytes("/run/trace");
            if (QString::fromUtf8(trace.mid(isHidden ? 0 : trace.indexOf('\n')))
                    .contains(QRegularExpression("s3cret|mellowfinch"))) {
                return "a secret in a process list: " + trace;
            }
            said += output.endsWith("!\n") == output.contains("Success") ? "wrong exit status: " : "";
            said += QByteArray(output).replace("!\n", "");
        }
        return said;
    }

    static QByteArray nmcli(const QString &words) { return runShell("/", "nmcli " + words).trimmed(); }

    /// All that is stored, be it in a file or in NetworkManager's memory.
    static QByteArray stored() { return fileBytes(kProfile) + nmcli("-s connection show Korvan-L2TP"); }

private slots:
    void cleanup()
    {
        QCOMPARE(compose4({"L2TP|Korvan-L2TP"}), "Success\n");
        QVERIFY(!nmcli("connection").contains("Korvan") && !QFile::exists(kProfile));
    }

    void reportsWhatFails()
    {
        const std::pair<QStringList, const char *> cases[] = {
            {{"PPTP|Korvan-PPTP|a.example"}, "install the package network-manager-pptp"},
            {{"L2TP|Korvan-L2TP|-x|key"}, "neither a host name nor an address"},
            {{"IKEV2|Korvan-IKEv2|a\nid=b"}, "neither a host name nor an address"},
            {{"L2TP|Korvan-L2TP|a.example|k\n[x]"}, "on one line"},
            {{"-|Korvan-L2TP|u|p\nx"}, "must be UTF-8 text on one line"},
            {{kSetUp.arg("reject"), "Korvan-L2TP|u|s3cret", kCheck},
             "Success\nError: 691 the user name or password is not valid\nKorvan-L2TP is not connected\n"},
        };
        for (const auto &[calls, answer] : cases) {
            const QByteArray output = compose4(calls);
            QVERIFY2(output.contains("Error") && output.contains(answer), output.constData());
            QVERIFY2(!stored().contains("s3cret"), answer);
        }
    }

    void connectsAndCounts()
    {
        const QString user = "u ser@x\\n;#";
        const QString password = " s3cret\\;\"'#=\u00e9\t$( ";
        QCOMPARE(compose4({"L2TP|Korvan-L2TP|192.0.2.9|mellowfinch", kCheck, "-|" + kSetUp.arg("up"),
                           "Korvan-L2TP|someone|else", kHangUp, "-|Korvan-L2TP|" + user + '|' + password,
                           "IKEV2|Korvan-IKEv2|2001:db8::1", "IKEV2|Korvan-IKEv2"}),
                 "Success\nKorvan-L2TP is not connected\n" + QByteArray("Success\n").repeated(6));
        QCOMPARE(QString::fromUtf8(fileBytes("/run/given")), user + '\n' + password + "\nmellowfinch\nyes");
        QCOMPARE(QFile::permissions(kProfile) & 0xfff, QFile::ReadUser | QFile::WriteUser);
        QVERIFY(!stored().contains("s3cret"));

        // "Recv BYTES", "Send BYTES", "Success"
        const auto sent = [] { return compose4({kCheck}).split('\n').value(1).mid(5).toULongLong(); };
        const quint64 before = sent();
        runShell("/", "ping -c1 -W1 -I tunnel -s1000 -b 255.255.255.255");
        QTRY_VERIFY(sent() > before + 1000);
        QCOMPARE(compose4({kHangUp, kCheck, kHangUp}), "Success\nKorvan-L2TP is not connected\nSuccess\n");
    }

    void hangUpEndsADialUnderWay()
    {
        for (const bool killed : {false, true}) {
            QCOMPARE(compose4({kSetUp.arg("silent")}), "Success\n");
            QFile::remove("/run/given");
            QProcess dialing;
            dialing.start(kTool, {"Korvan-L2TP", "u", "s3cret"});
            QTRY_VERIFY_WITH_TIMEOUT(QFile::exists("/run/given"), 20000);
            QVERIFY(!fileBytes(QStringLiteral("/proc/%1/cmdline").arg(dialing.processId())).contains("s3cret"));
            if (killed) {
                dialing.kill();
            }
            QCOMPARE(compose4({kHangUp}), "Success\n");
            QVERIFY(dialing.waitForFinished(5000));
            QVERIFY(!nmcli("-g NAME connection show --active").contains("Korvan") && !stored().contains("s3cret"));
        }
    }

    void cleanupTestCase()
    {
        runShell("/", "kill $(pidof NetworkManager)");
        QTRY_VERIFY(compose4({kCheck}).contains("Error: NetworkManager is not running, start it or install"));
    }
};

int main(int argc, char *argv[])
{
    if (!canUseLab()) {
        return 0;
    }
    if (!qEnvironmentVariableIsSet("KORVAN_INSIDE")) {
        qputenv("KORVAN_INSIDE", "1");
        qputenv("ASAN_OPTIONS", "detect_leaks=0"); // impossible when traced
        execlp("unshare", "unshare", "--net", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc",
               KORVAN_SOURCE "/tests/helpers/compose4/with-networkmanager.sh",
               KORVAN_BUILD "/tests/compose4_test/vpn_plugin", argv[0], argc > 1 ? argv[1] : nullptr, nullptr);
        return 1;
    }
    Compose4Test test;
    return QTest::qExec(&test, argc, argv);
}
#include "Compose4Test.moc"
