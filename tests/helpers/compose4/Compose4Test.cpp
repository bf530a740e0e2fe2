#include "tests/support/TestFiles.h"

#include <QProcess>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

static const QString kTool = KORVAN_BUNDLE "/compose4";
static const QString kProfile = "/run/NetworkManager/system-connections/Korvan-L2TP.nmconnection";
static const QString kName = "Korvan-L2TP";

class Compose4Test : public QObject
{
    Q_OBJECT

    /// Runs the helper under a tracer; no program that it starts may have a secret among its arguments.
    static QByteArray compose4(const QStringList &arguments)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start("strace",
                      QStringList{"-f", "-s", "999", "-e", "trace=execve", "-o", "/run/trace", kTool} + arguments);
        process.waitForFinished(150000);
        const QByteArray trace = fileBytes("/run/trace");
        const QByteArray children = trace.mid(trace.indexOf('\n')); // after the helper's own start
        if (children.contains("s3cret") || children.contains("mellowfinch")) {
            qFatal("a secret in a process list: %s", children.constData());
        }
        const QByteArray output = process.readAll();
        return (process.exitCode() == 0) == output.contains("Success") ? output : "wrong exit status";
    }

    static QByteArray setUpL2tp(const char *server)
    {
        return compose4({"L2TP", kName, QLatin1String(server), "mellowfinch"});
    }

    static QByteArray dial(const QString &user, const QString &password) { return compose4({kName, user, password}); }
    static QByteArray check() { return compose4({"CHECK", kName}); }

    static QByteArray nmcli(const QString &words)
    {
        QProcess process;
        process.start("nmcli", words.split(QLatin1Char(' ')));
        process.waitForFinished();
        return process.readAllStandardOutput().trimmed();
    }

private slots:
    void cleanup()
    {
        QCOMPARE(compose4({"L2TP", kName}), QByteArray("Success\n"));
        QVERIFY(!nmcli("connection").contains("Korvan"));
        QVERIFY(!QFile::exists(kProfile));
    }

    void createsAndUpdates()
    {
        QCOMPARE(setUpL2tp("one.example"), QByteArray("Success\n"));
        QCOMPARE(setUpL2tp("two.example"), QByteArray("Success\n"));
        const QByteArray data = nmcli("-g vpn.data connection show Korvan-L2TP");
        QVERIFY2(data.contains("gateway = two.example") && data.contains("ipsec-enabled = yes"), data.constData());
        QCOMPARE(nmcli("-s -g vpn.secrets connection show Korvan-L2TP"), QByteArray("ipsec-psk = mellowfinch"));
        struct stat info = {};
        QCOMPARE(stat(qPrintable(kProfile), &info), 0);
        QCOMPARE(info.st_mode & 0777, 0600U);
        QCOMPARE(check(), QByteArray("Korvan-L2TP is not connected\n"));

        const QStringList ikev2 = {"IKEV2", "Korvan-IKEv2"};
        QCOMPARE(compose4(ikev2 + QStringList{"2001:db8::1"}), QByteArray("Success\n"));
        QVERIFY(nmcli("connection").contains("Korvan-IKEv2"));
        QCOMPARE(compose4(ikev2), QByteArray("Success\n"));
    }

    void refuses_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QByteArray>("reason");
        QTest::newRow("no plug-in") << "PPTP|Korvan-PPTP|a.example"
                                    << QByteArray("install the package network-manager-pptp");
        QTest::newRow("not through here") << "SSTP|Korvan-SSTP|a.example" << QByteArray("without NetworkManager");
        QTest::newRow("no server") << "L2TP|Korvan-L2TP||key" << QByteArray("neither a host name nor an address");
        QTest::newRow("option") << "L2TP|Korvan-L2TP|-x|key" << QByteArray("neither a host name nor an address");
        QTest::newRow("second line") << "IKEV2|Korvan-IKEv2|a\nid=b"
                                     << QByteArray("neither a host name nor an address");
        QTest::newRow("no key") << "L2TP|Korvan-L2TP|a.example" << QByteArray("needs a pre-shared key");
        QTest::newRow("second line of key") << "L2TP|Korvan-L2TP|a.example|k\n[x]" << QByteArray("on one line");
        QTest::newRow("second line of password")
            << "Korvan-L2TP|u|p\nx" << QByteArray("must be UTF-8 text on one line");
        QTest::newRow("dial before setup") << "Korvan-L2TP|u|p" << QByteArray("is not set up");
        QTest::newRow("other type's name") << "L2TP|Korvan-PPTP" << QByteArray("usage");
        QTest::newRow("unknown name") << "Home" << QByteArray("usage");
        QTest::newRow("user only") << "Korvan-L2TP|u" << QByteArray("usage");
        QTest::newRow("nothing") << "" << QByteArray("usage");
    }

    void refuses()
    {
        QFETCH(QString, arguments);
        QFETCH(QByteArray, reason);
        const QByteArray output = compose4(arguments.split(QLatin1Char('|')));
        QVERIFY2(output.startsWith("Error") && output.contains(reason), output.constData());
    }

    void connectsAndCounts()
    {
        const QString user = "u ser@x\\n;#";
        const QString password = " s3cret\\;\"'#=\u00e9\t$( ";
        QCOMPARE(setUpL2tp("up.example"), QByteArray("Success\n"));
        QCOMPARE(dial("someone", "else"), QByteArray("Success\n"));
        QCOMPARE(compose4({kName}), QByteArray("Success\n"));
        QCOMPARE(dial(user, password), QByteArray("Success\n"));
        QCOMPARE(QString::fromUtf8(fileBytes("/run/given")), user + QLatin1Char('\n') + password + "\nmellowfinch");
        QVERIFY(!fileBytes(kProfile).contains("s3cret"));
        QVERIFY(!nmcli("-s -g vpn.secrets connection show Korvan-L2TP").contains("s3cret"));

        const auto sent = [] { return check().split('\n').value(1).mid(5).toULongLong(); };
        const quint64 before = sent();
        QProcess::execute("ping", {"-c1", "-W1", "-I", "tunnel", "-s1000", "-b", "255.255.255.255"});
        QTRY_VERIFY(sent() > before + 1000);
        const QByteArray report = check();
        QVERIFY2(report.startsWith("Recv ") && report.endsWith("\nSuccess\n"), report.constData());

        QCOMPARE(compose4({kName}), QByteArray("Success\n"));
        QCOMPARE(check(), QByteArray("Korvan-L2TP is not connected\n"));
        QCOMPARE(compose4({kName}), QByteArray("Success\n")); // nothing left to do
    }

    void reportsARejectedPassword()
    {
        QCOMPARE(setUpL2tp("reject.example"), QByteArray("Success\n"));
        const QByteArray output = dial("u", "s3cret");
        QVERIFY2(output.startsWith("Error: 691"), output.constData());
        QVERIFY(!fileBytes(kProfile).contains("s3cret"));
        QCOMPARE(check(), QByteArray("Korvan-L2TP is not connected\n"));
    }

    void hangUpEndsADialUnderWay_data()
    {
        QTest::addColumn<bool>("killed");
        QTest::newRow("running") << false;
        QTest::newRow("killed") << true;
    }

    void hangUpEndsADialUnderWay()
    {
        QFETCH(bool, killed);
        QCOMPARE(setUpL2tp("silent.example"), QByteArray("Success\n"));
        QFile::remove("/run/given");
        QProcess dialing;
        dialing.start(kTool, {kName, "u", "s3cret"});
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists("/run/given"), 20000);
        QVERIFY(!fileBytes(QStringLiteral("/proc/%1/cmdline").arg(dialing.processId())).contains("s3cret"));
        if (killed) {
            dialing.kill();
        }
        QCOMPARE(compose4({kName}), QByteArray("Success\n"));
        QVERIFY(dialing.waitForFinished(5000));
        QVERIFY(!nmcli("-g NAME connection show --active").contains("Korvan"));
        QVERIFY(!nmcli("-s -g vpn.secrets connection show Korvan-L2TP").contains("s3cret"));
    }

    void cleanupTestCase()
    {
        QProcess::execute("bash", {"-c", "kill $(pidof NetworkManager)"});
        QTRY_VERIFY(check().contains("Error: NetworkManager is not running"));
        QVERIFY(setUpL2tp("up.example").contains("install the package network-manager"));
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
        execlp("unshare", "unshare", "--net", "--mount", "--pid", "--fork", "--kill-child",
               KORVAN_SOURCE "/tests/helpers/compose4/with-networkmanager.sh",
               KORVAN_BUILD "/tests/compose4_test/vpn_plugin", argv[0], argc > 1 ? argv[1] : nullptr, nullptr);
        return 1;
    }
    Compose4Test test;
    return QTest::qExec(&test, argc, argv);
}
#include "Compose4Test.moc"
