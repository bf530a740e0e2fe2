#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QtTest>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <thread>
#include <unistd.h>

namespace {

const QByteArray kBenign = "client\nremote a\nca ca.crt\n";

struct Run
{
    int exitCode = -1;
    QByteArray output;                       ///< of compose itself
    QHash<QByteArray, QByteArrayList> began; ///< with what OpenVPN's stand-in was started
};

} // namespace

class ComposeTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void startsOpenVpnClean();
    void files_data();
    void files();
    void credentials_data();
    void credentials();
    void proxyCredentials();
    void aSwappedFileIsNeverRead();
    void missingParentEndsIt();
    void lockDownIsSeen();

private:
    QString path(const QString &name) const { return QCoreApplication::applicationDirPath() + name; }
    Run run(const QStringList &more = {}, const QByteArrayList &answers = {});

    QStringList m_starter;
};

Run ComposeTest::run(const QStringList &more, const QByteArrayList &answers)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    const QStringList arguments = QStringList{path("/compose"), "--config", path("/cfg/OpenVPN/temp")} + more;
    process.start(m_starter.value(0, "/usr/bin/env"), m_starter.mid(1) + arguments);
    QByteArray output;
    const auto waitFor = [&](const QByteArray &prompt) {
        while (!output.contains(prompt) && process.waitForReadyRead(30000))
            output += process.readAll();
        return output.contains(prompt);
    };
    if (!answers.isEmpty() && waitFor("Auth Username:"))
        process.write(answers[0]);
    if (answers.size() > 1 && waitFor("Auth Password:"))
        process.write(answers[1]);
    if (answers.isEmpty())
        process.closeWriteChannel();
    Run result;
    if (!process.waitForFinished(30000))
        return result;
    output += process.readAll();
    result.exitCode = process.exitCode();
    const int recorded = output.indexOf(QByteArray("recorded\0", 9));
    result.output = recorded < 0 ? output : output.left(recorded);
    const QByteArrayList parts = output.mid(recorded < 0 ? output.size() : recorded).split('\0');
    for (int i = 0; i + 1 < parts.size(); i += 2)
        result.began[parts[i]] += parts[i + 1];
    return result;
}

void ComposeTest::init()
{
    QDir(path("/cfg")).removeRecursively();
    putFile(path("/cfg/OpenVPN/temp"), kBenign);
    putFile(path("/cfg/OpenVPN/ca.crt"), "CERTIFICATE\n");
    putFile(path("/cfg/secret"), "SECRET\n");
}

void ComposeTest::startsOpenVpnClean()
{
    putFile(path("/cfg/OpenVPN/temp"), "client\nup /bin/evil\nca \"ca.crt\"\n");
    qputenv("KORVAN_TEST", "1");
    // Ignored signals pass through exec; so do descriptors.
    std::signal(SIGTERM, SIG_IGN);
    const int inherited = dup(STDERR_FILENO);
    Run result = run({"--cd", path("/cfg/OpenVPN/"), "--management", "127.0.0.1", "44358", "--script-security", "2",
                      "--up", path("/up.sh"), "--down", path("/down.sh")});
    std::signal(SIGTERM, SIG_DFL);
    close(inherited);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output,
             QByteArray("compose: profile line 2: \"up\" is left out: the scripts of a profile are not run\n"));
    QVERIFY(result.began["--config"].value(0).startsWith("client\n\nca /proc/self/fd/"));
    QVERIFY(!result.began["writable"].contains("yes"));
    QCOMPARE(result.began["environment"], QByteArrayList{"PATH=/usr/sbin:/usr/bin:/sbin:/bin"});
    QCOMPARE(result.began["parent-death signal"], QByteArrayList{QByteArray::number(SIGTERM)});
    QCOMPARE(result.began["SIGTERM"], QByteArrayList{"default"});
    // Standard input and output, the folder being listed, the profile, the key's password, the certificate.
    QCOMPARE(result.began["descriptor"].size(), 7);
    QVERIFY(result.began["descriptor"].contains("/dev/null"));
    QVERIFY(result.began["descriptor"].contains(path("/cfg/OpenVPN/ca.crt").toLocal8Bit()));
}

void ComposeTest::files_data()
{
    QTest::addColumn<QString>("make");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("reason");
    const auto row = [](const char *make, const char *line, const char *reason) {
        QTest::addRow("%s; %s", make, line) << QString(make) << QByteArray(line) << QByteArray(reason);
    };
    row("", "ca ca.crt", "");
    row("ln -s ca.crt link", "ca link", "");
    row("cp ca.crt 'my ca.crt'", "ca 'my ca.crt'", "");
    row("mkdir keys", "capath keys", "");
    row("", "dh none", "");
    row("ln -s ../secret out", "ca out", "line 2: \"ca\" names out, which leads out of its folder through a link");
    row("ln -s .. out", "key out/secret", "leads out of its folder through a link");
    row("", "cert none.crt", "line 2: \"cert\" names none.crt, which can not be opened: No such file");
    row("mkfifo pipe", "ca pipe", "is not a regular file");
    row("", "auth-user-pass ca.crt", "holds no user name and password");
    row("rm temp", "", "the profile cfg/OpenVPN/temp can not be opened: No such file");
    row("truncate -s 100M temp", "", "is larger than 1024 KB");
    row("mv temp t; ln -s t temp", "", "leads out of its folder through a link");
    row("rm temp; mkfifo temp", "", "is not a regular file");
    row("rm temp; mkdir temp", "", "is not a regular file");
}

/// The files that a profile names come from its folder, and it must be a small file itself.
void ComposeTest::files()
{
    QFETCH(QString, make);
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, reason);
    putFile(path("/cfg/OpenVPN/temp"), "client\n" + line + "\n");
    QCOMPARE(QProcess::execute("sh", {"-c", "cd \"$0\"; " + make, path("/cfg/OpenVPN")}), 0);
    const Run result = run();
    QCOMPARE(result.exitCode, reason.isEmpty() ? 0 : 1);
    QVERIFY2(result.output.contains(reason), result.output.constData());
}

void ComposeTest::credentials_data()
{
    QTest::addColumn<QByteArrayList>("answers");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const QByteArrayList &answers, const QByteArray &expected) {
        QTest::newRow(name) << answers << expected;
    };
    row("as the engine sends them", {"anna\r\n", "secret\r\n"}, "anna\nsecret\n");
    row("plain line ends", {"anna\n", "secret\n"}, "anna\nsecret\n");
    row("quotes and backslashes", {"\"a'n\\na\"\r\n", " '\\\" \\\r\n"}, "\"a'n\\na\"\n '\\\" \\\n");
    row("UTF-8 and Latin-1", {"J\xC3\xB6rg\r\n", "p\xE4ss#;\r\n"}, "J\xC3\xB6rg\np\xE4ss#;\n");
    row("1000 characters", {QByteArray(1000, 'u') + "\r\n", "p\r\n"}, QByteArray(1000, 'u') + "\np\n");
    row("line end in the name", {"an\nna\r\n"}, "! the user name holds a line end");
    row("carriage return in the name", {"an\rna\r\n"}, "! the user name holds a line end");
    row("line end in the password", {"anna\r\n", "sec\r\nret\r\n"}, "! the password holds a line end");
    row("zero byte", {QByteArray("an\0na\r\n", 7)}, "! the user name holds");
    row("empty name", {"\r\n"}, "! the user name is empty");
    row("empty password", {"anna\r\n", "\r\n"}, "! the password is empty");
    row("too long", {"anna\r\n", QByteArray(1100, 'p') + "\r\n"}, "! the password is too long");
    row("end of input", {}, "! no user name was given");
}

void ComposeTest::credentials()
{
    QFETCH(QByteArrayList, answers);
    QFETCH(QByteArray, expected);
    // Asked for by the command line, and by the profile alone.
    for (const QStringList &arguments : {QStringList{"--auth-user-pass", "--auth-nocache"}, QStringList()}) {
        putFile(path("/cfg/OpenVPN/temp"), kBenign + (arguments.isEmpty() ? "auth-user-pass\n" : ""));
        Run result = run(arguments, answers);
        if (expected.startsWith('!')) {
            QCOMPARE(result.exitCode, 1);
            QVERIFY2(result.output.contains("compose: " + expected.mid(2)), result.output.constData());
            continue;
        }
        QCOMPARE(result.output, QByteArray("Enter Auth Username:Enter Auth Password:"));
        QCOMPARE(result.began["--auth-user-pass"], QByteArrayList{expected});
        QVERIFY(!result.began["argument"].contains("secret"));
    }
}

void ComposeTest::proxyCredentials()
{
    const QStringList arguments = {"--http-proxy", "proxy", "8080", path("/cfg/proxy")};
    QVERIFY(run(arguments).output.contains("credential file can not be opened"));
    putFile(path("/cfg/proxy"), "user\r\n\r\n");
    QVERIFY(run(arguments).output.contains("credential file holds no user name and password"));
    putFile(path("/cfg/proxy"), "user\r\npass\r\n");
    const QByteArrayList given = run(arguments).began["argument"];
    QCOMPARE(given.mid(given.indexOf("--http-proxy"), 3), (QByteArrayList{"--http-proxy", "proxy", "8080"}));
    QVERIFY(given.value(given.indexOf("8080") + 1).startsWith("/proc/self/fd/"));
}

void ComposeTest::aSwappedFileIsNeverRead()
{
    const QString folder = path("/cfg/OpenVPN/");
    const QString spare = path("/cfg/spare");
    std::atomic<bool> stop{false};
    std::thread swapper([&] {
        const auto replace = [&](const QString &name, const QByteArray &content, bool link) {
            QFile::remove(spare);
            if (link) {
                QFile::link("../secret", spare);
            } else {
                putFile(spare, content);
            }
            std::rename(spare.toLocal8Bit().constData(), (folder + name).toLocal8Bit().constData());
        };
        while (!stop) {
            replace("temp", "client\nplugin evil.so\n", false);
            replace("temp", kBenign, false);
            replace("ca.crt", {}, true);
            replace("ca.crt", "CERTIFICATE\n", false);
        }
    });
    int started = 0;
    int refused = 0;
    QByteArray failure;
    for (int i = 0; i < 1000 && failure.isEmpty(); ++i) {
        Run result = run();
        const QByteArray profile = result.began["--config"].value(0);
        const QByteArrayList files = result.began["descriptor"];
        (result.exitCode == 0 ? started : refused)++;
        if (result.exitCode > 1 || profile.contains("plugin") || files.contains(path("/cfg/secret").toLocal8Bit()))
            failure = "run " + QByteArray::number(i) + ": " + result.output + profile;
    }
    stop = true;
    swapper.join();
    QVERIFY2(failure.isEmpty(), failure.constData());
    qInfo("%d started, %d refused", started, refused);
    QVERIFY(started > 0 && refused > 0);
}

void ComposeTest::missingParentEndsIt()
{
    // A starter that ends at once: whoever reads the output is gone.
    int ends[2];
    QCOMPARE(pipe(ends), 0);
    close(ends[0]);
    QProcess process;
    process.start(
        "/bin/sh",
        {"-c", QString("exec %1 --config %2 >&%3").arg(path("/compose"), path("/cfg/OpenVPN/temp")).arg(ends[1])});
    QVERIFY(process.waitForFinished());
    close(ends[1]);
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().contains("has ended"));
}

void ComposeTest::lockDownIsSeen()
{
    if (geteuid() != 0)
        QSKIP("needs root for a network of its own", "");
    const QString script = "ip link set lo up; ip route add default dev lo table 19311; %1 exec \"$0\" \"$@\"";
    m_starter = QStringList{"unshare", "--net", "sh", "-c", script.arg("")};
    QVERIFY(run().began["argument"].join('|').contains("--redirect-gateway|def1|local"));
    m_starter.last() = script.arg("ip route add default dev lo;");
    QVERIFY(!run().began["argument"].contains("--redirect-gateway"));
}

QTEST_GUILESS_MAIN(ComposeTest)
#include "ComposeTest.moc"
