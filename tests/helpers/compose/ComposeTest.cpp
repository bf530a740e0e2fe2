#include "tests/support/Cases.h"
#include "tests/support/OwnNetwork.h"
#include "tests/support/Shell.h"
#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace {

const char kBenign[] = "client\nremote a\nca ca.crt\n";

/// Makes the folder "real" with the compose that ships, the profiles and what they name or hold.
const char kMakeProfiles[] = "mkdir -p real/cfg/OpenVPN; cp " KORVAN_BUNDLE "/compose real; cd real/cfg/OpenVPN\n"
                             "cp " KORVAN_SOURCE "/tests/data/profiles/*.ovpn ."
                             R"sh(
openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -subj /CN=a -keyout client.key -out client.crt
openssl x509 -in client.crt -text -out ca.crt
openssl pkcs12 -export -in client.crt -inkey client.key -passout pass: -out client.p12
openvpn --genkey secret static.key; cp static.key ta.key
openvpn --genkey tls-crypt-v2-server server.key
openvpn --genkey tls-crypt-v2-client crypt2.key --tls-crypt-v2 server.key
printf 'anna\r\nsecret\r\n' >login.txt
for pair in CA:client.crt CERT:client.crt KEY:client.key STATIC:static.key TEXT:ca.crt CRYPT2:crypt2.key; do
    sed -i -e "/@${pair%:*}@/{r ${pair#*:}" -e 'd}' *.ovpn
done
)sh";

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

public:
    static void initMain() { enterOwnNetwork(); }

private slots:
    void init()
    {
        QDir(path("")).removeRecursively();
        putFile(m_profile, kBenign);
        QFile::copy(QCoreApplication::applicationDirPath() + "/compose", path("/compose"));
        putFile(path("/cfg/OpenVPN/ca.crt"), "CERTIFICATE\n");
        putFile(path("/cfg/secret"), "SECRET\n");
    }

    void startsOpenVpnClean()
    {
        putFile(m_profile, "client\nup /bin/evil\nca \"ca.crt\"\n");
        putFile(path("/cfg/proxy"), "user\r\npass\r\n");
        const QString line = "--http-proxy|proxy|8080|%1/cfg/proxy|--auth-user-pass|--auth-nocache|--cd|"
                             "%1/cfg/OpenVPN/|--management|127.0.0.1|44358|--script-security|2|--up|%1/up.sh|--down|"
                             "%1/down.sh";
        qputenv("KORVAN_TEST", "1");
        // Ignored signals pass through exec; so do descriptors.
        std::signal(SIGTERM, SIG_IGN);
        const int inherited = dup(STDERR_FILENO);
        Run result = run(line.arg(path("")).split('|'), {"anna\r\n", "secret\r\n"});
        std::signal(SIGTERM, SIG_DFL);
        close(inherited);
        QCOMPARE(result.output, "compose: profile line 2: \"up\" is left out: the scripts of a profile are not run\n"
                                "Enter Auth Username:Enter Auth Password:");
        QString given = QString::fromUtf8(result.began["argument"].join('|')).remove(path(""));
        QCOMPARE(given.replace(QRegularExpression("/proc/self/fd/\\d+"), "FD").remove(path("").replace('"', "\\\"")),
                 "--verb|3|--askpass|FD|--persist-tun|--mark|19311|--http-proxy|proxy|8080|FD|--config|FD|"
                 "--auth-user-pass|FD|--auth-nocache|--cd|/cfg/OpenVPN/|--management|127.0.0.1|44358|"
                 "--script-security|2|--up|\"/up.sh\"|--route-up|\"/network\" routes|--down|\"/down.sh\"");
        QVERIFY(result.began["--config"].value(0).startsWith("client\n\nca /proc/self/fd/"));
        QCOMPARE(result.began["writable"].join(' '), "no no no no"); // all are private copies
        QCOMPARE(result.began["state"].join(' '), "PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C dies-by-15 default");
        // Standard input and output, the folder being listed, the profile, the key's password, the certificate, both
        // credentials.
        QCOMPARE(result.began["descriptor"].size(), 9);
        QVERIFY(!result.began["descriptor"].join(' ').contains("ca.crt")); // whatever becomes of the files' names
    }

    /// The files that a profile names come from its folder, and it must be a small file itself.
    void files()
    {
        const std::tuple<const char *, QByteArray, QByteArray> cases[] = {
            {"ln -s ca.crt link", "ca link", ""},
            {"ln -s ../secret out", "ca out", "line 2: \"ca\" names out, which leads out of its folder"},
            {"ln -s .. out", "key out/secret", "leads out of its folder through a link"},
            {"mkfifo pipe", "ca pipe", "is not a regular file"},
            {"", "auth-user-pass ca.crt", "holds no user name and password"},
            {"truncate -s 100M temp", "", "is larger than 1024 KB"},
            {"mv temp t; ln -s t temp", "", "leads out of its folder through a link"},
        };
        for (const auto &[make, line, reason] : cases) {
            init();
            putFile(m_profile, "client\n" + line + "\n");
            runShell(path("/cfg/OpenVPN"), make);
            const Run result = run();
            COMPARE_CASE(make + line, result.exitCode, reason.isEmpty() ? 0 : 1);
            QVERIFY2(result.output.contains(reason), result.output.constData());
        }
    }

    void credentials()
    {
        putFile(m_profile, "client\nauth-user-pass\n");
        const std::pair<QByteArrayList, QByteArray> cases[] = {
            {{"\"a'n\\na\"\r\n", " '\\\" \\\r\n"}, "\"a'n\\na\"\n '\\\" \\\n"},
            {{"J\xC3\xB6rg\r\n", "p\xE4ss#;\r\n"}, "J\xC3\xB6rg\np\xE4ss#;\n"},
            {{"anna\r\n", "sec\r\nret\r\n"}, "the password holds a line end"},
            {{"anna\r\n", QByteArray(1100, 'p') + "\r\n"}, "the password is too long"},
            {{}, "no user name was given"},
        };
        for (const auto &[answers, outcome] : cases) {
            const Run result = run({}, answers);
            const QByteArray given = result.began["--auth-user-pass"].value(0);
            QVERIFY2(result.exitCode == 0 ? given == outcome : result.output.contains(outcome), outcome.constData());
        }
    }

    void aSwappedFileIsNeverRead()
    {
        putFile(path("/cfg/evil"), "client\nplugin evil.so\n");
        QVERIFY(QFile::link("../secret", path("/cfg/OpenVPN/link")));
        std::atomic<bool> stop{false};
        std::thread swapper([&] {
            const auto exchange = [](const char *one, const char *other) {
                renameat2(AT_FDCWD, qPrintable(path(one)), AT_FDCWD, qPrintable(path(other)), RENAME_EXCHANGE);
            };
            while (!stop) {
                exchange("/cfg/evil", "/cfg/OpenVPN/temp");
                exchange("/cfg/OpenVPN/link", "/cfg/OpenVPN/ca.crt");
            }
        });
        int started = 0, failed = 0;
        for (int i = 0; i < 1000; ++i) {
            const Run result = run();
            started += result.exitCode == 0 ? 1 : 0;
            if (result.exitCode < 0 || result.exitCode > 1 || result.began["--config"].value(0).contains("plugin") ||
                result.began["descriptor"].contains(path("/cfg/secret").toLocal8Bit())) {
                ++failed;
            }
        }
        stop = true;
        swapper.join();
        QCOMPARE(failed, 0);
        QVERIFY2(started > 0 && started < 1000, "the files were not swapped in time");
    }

    /// Profiles as they are found in the wild go through the compose that ships into the installed OpenVPN.
    void realOpenVpnTakesRealProfiles()
    {
        if (geteuid() != 0) {
            QSKIP("NEEDS ROOT: no profile was run in a network of its own", "");
        }
        const QString folder = path("/real/cfg/OpenVPN/");
        runShell(path(""), kMakeProfiles);
        const QStringList profiles = QDir(folder).entryList({"*.ovpn"});
        QVERIFY(profiles.size() >= 7);
        for (const QString &name : profiles) {
            QProcess process;
            process.setProcessChannelMode(QProcess::MergedChannels);
            process.start("unshare", {"--net", path("/real/compose"), "--config", folder + name, "--cd", folder});
            QByteArray output;
            const auto isTrying = [&] { return output.contains("unreachable") || output.contains("link remote:"); };
            for (int asked = 0; !isTrying() && process.waitForReadyRead(30000);) {
                output += process.readAll();
                if (asked < output.count("Enter Auth")) {
                    process.write(++asked == 1 ? "anna\r\n" : "secret\r\n");
                }
            }
            process.kill();
            process.waitForFinished();
            QVERIFY2(isTrying(), (name.toUtf8() + ": " + output).constData());
        }
    }

private:
    /// Starts compose, and answers its questions.
    Run run(const QStringList &more = {}, const QByteArrayList &answers = {})
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(path("/compose"), QStringList{"--config", m_profile} + more);
        QByteArray output;
        for (int asked = 0; asked < answers.size(); ++asked) {
            while (output.count("Enter Auth") <= asked && process.waitForReadyRead(30000)) {
                output += process.readAll();
            }
            process.write(answers[asked]);
        }
        if (answers.isEmpty()) {
            process.closeWriteChannel();
        }
        if (!process.waitForFinished(30000)) {
            return {};
        }
        output += process.readAll() + '\0';
        const QByteArrayList parts = output.split('\0');
        Run result = {process.exitCode(), parts[0], {}};
        for (int i = 1; i + 1 < parts.size(); i += 2) {
            result.began[parts[i]] += parts[i + 1];
        }
        return result;
    }

    /// OpenVPN takes blanks and quotes in the path of a script for its own.
    static QString path(const QString &name) { return QCoreApplication::applicationDirPath() + "/a \"b\"" + name; }
    const QString m_profile = path("/cfg/OpenVPN/temp");
};

QTEST_GUILESS_MAIN(ComposeTest)
#include "ComposeTest.moc"
