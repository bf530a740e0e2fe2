#include "common/AppPath.h"
#include "tests/support/TestFiles.h"
#include "tests/vpn/TestClient.h"

#include <QRegularExpression>
#include <QTest>

#include <cstdio>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

using Scripts = QList<QByteArray>;

/// The worker's paths against stand-ins for the helpers, each of one behaviour. The stand-in runs the row's scripts:
/// the first one to connect, the other ones when the service helper is asked for the status and to hang up. They find
/// the application folder in $app; $go waits until open() has returned. This file makes one program a path.
class PathsTest : public QObject
{
    Q_OBJECT

private slots:
    void path_data();
    void path();

private:
    static void openVPNRows();
    static void serviceRows();
    static void sstpRows();
    static void row(const char *name, int type, bool close, const Scripts &scripts, const QString &outcome,
                    int downScripts = 0)
    {
        QTest::newRow(name) << type << close << scripts << outcome << downScripts;
    }
};

static const QByteArray kHang = "exec sleep 60\n";
static const QByteArray kUp = "echo Initialization Sequence Completed\n";
static const QString kConnectError = "2 4|[ERROR]vpn connect error, please check log";
static const QString kTunnelError = "2 3 4|[ERROR]openvpn error, please check log";
static const QString kStartError = "[ERROR]start vpn helper process failed.";
static const QString kRefused = "2 4|[ERROR]username or password is not matched.";

void PathsTest::openVPNRows()
{
    const int type = VPNClient::OPENVPN;
    row("does not start", type, false, {}, "2 4|[ERROR]start openvpn process failed.");
    row("says nothing", type, false, {"exit 0"}, kConnectError);
    row("is killed while connecting", type, false, {"kill -9 $$"}, kConnectError, 1);
    row("half a marker", type, false, {"printf 'Initialization Sequence Com'; sleep 0.3; echo pleted"},
        kConnectError);
    row("a NUL first", type, false, {"printf 'x\\0Initialization Sequence Completed\\n'"}, kConnectError);
    row("closes its output", type, false, {"exec >&- 2>&-\nsleep 0.3\n" + kUp}, kConnectError);
    row("credentials", type, false, {"echo AUTH_FAILED; sleep 0.2"}, kRefused);
    row("with errors", type, false, {"echo Initialization Sequence Completed With Errors\n" + kHang},
        "2 4|[ERROR]can not create vpn tunnel.", 1);
    row("prompts", type, false,
        {"printf 'Enter Auth Username:Enter Auth Password:'; IFS= read -r user\n"
         "printf 'Enter Auth Password:'; IFS= read -r password\n"
         "[ \"$LC_ALL|$user|$password\" = $'C|j\"ö\\\\\\r| p$w \\r' ] && " +
         kUp + "$go"},
        kTunnelError);
    row("ends while connected", type, false, {kUp + "$go"}, kTunnelError);
    row("is killed while connected", type, false, {kUp + "$go\nkill -9 $$"}, kTunnelError, 1);
    row("cancel", type, true, {kHang}, "2 1 0", 1);
    row("cancel, signals ignored", type, true, {"trap '' TERM INT\nwhile :; do sleep 0.1; done"}, "2 1 0", 1);
    row("cancel, prompts without end", type, true, {"while :; do echo Auth Username:; done"}, "2 1 0", 1);
    row("close", type, true, {kUp + kHang}, "2 3 1 0", 1);
}

void PathsTest::serviceRows()
{
    const QByteArray dialled = "echo Success\n";
    const QByteArray up = "echo Recv 5; echo Send 7; echo Success\n";
    const QByteArray hangUp = "kill -TERM $(head -1 \"$app/pids\")\n";
    const QString killed = "|worker thread is killed.\n";
    row("does not start", VPNClient::PPTP, false, {}, "2 4|" + kStartError);
    row("says nothing", VPNClient::L2TP, false, {"exit 1"}, kConnectError);
    row("half a marker", VPNClient::L2TP, false, {"printf Succ; sleep 0.3; echo ess"}, kConnectError);
    row("refuses and hangs", VPNClient::L2TP, false, {"echo 'Error 691'\n" + kHang}, "2 4|[ERROR]Error 691\n");
    row("status reports the end", VPNClient::IKEV2, false, {dialled, "echo Recv 5; echo Send x; echo gone"},
        "2 3 4|[ERROR]unexpected vpn disconnected.|5/0");
    row("status does not start", VPNClient::PPTP, false, {"echo Success; chmod a-x \"$0\""}, "2 3 4|" + kStartError);
    row("cancel", VPNClient::L2TP, true, {kHang, {}, hangUp}, "2 1 0|Connection canceled.");
    row("cancel, the stop hangs", VPNClient::L2TP, true, {kHang, {}, kHang}, "2 1 0" + killed);
    row("close", VPNClient::L2TP, true, {dialled, up, "exit 0"}, "2 3 1 0|5/7");
    row("close, the stop hangs", VPNClient::L2TP, true, {dialled, up, kHang}, "2 3 1 0" + killed + "|5/7");
    row("close, the stop does not start", VPNClient::L2TP, true, {dialled, up + "chmod a-x \"$0\""},
        "2 3 1 4 0|" + kStartError + "|5/7");
    row("close, the status hangs", VPNClient::L2TP, true, {dialled, kHang}, "2 3 1 0" + killed);
}

void PathsTest::sstpRows()
{
    const int type = VPNClient::SSTP;
    row("does not start", type, false, {}, "2 4|" + kStartError);
    row("its end is not reported, connected", type, false, {"echo remote IP address 10.0.0.1 >> \"$log\"\n$go"},
        "2 3");
    row("its end is not reported, connecting", type, false, {"echo remote IP address; sleep 0.3"}, "2");
    row("second look", type, false, {"echo a > \"$log\"; sleep 1; echo authentication failed >> \"$log\"; sleep 4"},
        kRefused);
    row("cancel", type, true, {kHang}, "2 1 0|Connection canceled.");
}

void PathsTest::path_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("close");
    QTest::addColumn<Scripts>("scripts");
    QTest::addColumn<QString>("outcome"); // the states, then the errors and notes, then the byte counts
    QTest::addColumn<int>("downScripts");
    KORVAN_ROWS();
}

void PathsTest::path()
{
    QFETCH(int, type);
    QFETCH(bool, close);
    QFETCH(Scripts, scripts);
    QFETCH(QString, outcome);
    const QByteArray app = "app='" + appPath("").toUtf8() + "'\n";
    for (const char *helper : {"/compose", "/compose4", "/composec"}) {
        putScript(appPath(helper), app + "log=\"$app/vpnlog.txt\"\n"
                                         "go='until [ -e \"$app/go\" ]; do sleep 0.05; done'\n"
                                         "echo $$ >> \"$app/pids\"\nwhich=0\n"
                                         "[[ $0 = */compose4 ]] && case $# in 2) which=1 ;; 1) which=2 ;; esac\n"
                                         "source <(sed \"s|\\$go|$go|\" \"$app/script$which\")\n");
        if (scripts.isEmpty()) {
            QFile::setPermissions(appPath(helper), QFile::ReadOwner);
        }
    }
    for (int i = 0; i < 3; ++i) {
        putFile(appPath("/script%1").arg(i), scripts.value(i));
    }
    putScript(appPath("/down.sh"), app + "echo $LC_ALL >> \"$app/down\"\n");
    for (const char *file : {"/go", "/down", "/pids"}) {
        QFile::remove(appPath(file));
    }
    putFile(appPath("/vpnlog.txt"), "remote IP address of an earlier connection\n");
    putFile(appPath("/options"), QTest::currentDataTag());
    {
        TestClient client;
        bool closed = !close;
        if (close) {
            QTimer::singleShot(500, &client, [&] { closed = client.close(); });
        }
        QCOMPARE(client.openWith(type, {}, "j\"ö\\", " p$w "), outcome.startsWith("2 3"));
        putFile(appPath("/go"), {});
        QTRY_VERIFY_WITH_TIMEOUT(closed && client.isFinished(), 20000);
        const auto came = [&] {
            QStringList parts(client.states.join(' '));
            parts += client.messages.filter(QRegularExpression("ERROR|canceled|killed"));
            return (client.counts() == "0/0" ? parts : parts << client.counts()).join('|');
        };
        QTRY_COMPARE(came(), outcome);
    }
    QFETCH(int, downScripts);
    QTRY_COMPARE_WITH_TIMEOUT(fileBytes(appPath("/down")), QByteArray("C\n").repeated(downScripts), 20000);
    for (const QByteArray &pid : fileBytes(appPath("/pids")).split('\n')) {
        QVERIFY2(pid.isEmpty() || !QFile::exists("/proc/" + pid + "/stat"), "a helper is left");
    }
    if (type == VPNClient::SSTP) { // what was installed first stays
        QCOMPARE(fileBytes("/etc/ppp/options"), QByteArray("does not start"));
    }
}

/// The SSTP path writes below /etc: it gets one of its own. Who is not root becomes it in a user namespace.
static bool hasOwnEtc()
{
    if (const uid_t user = geteuid(); user != 0) {
        const gid_t group = getegid();
        if (unshare(CLONE_NEWUSER) != 0) {
            return false;
        }
        putFile("/proc/self/uid_map", "0 " + QByteArray::number(user) + " 1");
        putFile("/proc/self/setgroups", "deny");
        putFile("/proc/self/gid_map", "0 " + QByteArray::number(group) + " 1");
    }
    return unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("tmpfs", "/etc", "tmpfs", 0, nullptr) == 0;
}

int main(int argc, char **argv)
{
    if (!hasOwnEtc()) {
        std::puts("SKIPPED WHOLE TEST: it needs root or user namespaces, for an /etc of its own");
        return 0;
    }
    qputenv("LC_ALL", "C.UTF-8");
    QCoreApplication application(argc, argv);
    PathsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "PathsTest.moc"
