#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"
#include "tests/vpn/TestClient.h"
#include "vpn/VPNTables.h"

#include <QRegularExpression>

#include <cstdio>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

static constexpr auto kOpenVPN = VPNClient::OPENVPN;
static constexpr auto kL2TP = VPNClient::L2TP;
static constexpr auto kSstp = VPNClient::SSTP;
static const QByteArray kHang = "exec sleep 60\n";
static const QByteArray kUp = "echo Initialization Sequence Completed\n";
static const QByteArray kPrompts = "printf 'Enter Auth Username:Enter Auth Password:'; IFS= read -r user\n"
                                   "printf 'Enter Auth Password:'; IFS= read -r password\n"
                                   "[ \"$LC_ALL|$user|$password\" = $'C|j\"ö\\\\\\r| p$w \\r' ] && ";
static const QByteArray kDialled = "echo Success\n";
static const QByteArray kCounts = "echo Recv 5; echo Send 7; echo Success\n";
static const QString kConnectError = "2 4|!vpn connect error, please check log";
static const QString kTunnelError = "2 3 4|!openvpn error, please check log";
static const QString kStartError = "!start vpn helper process failed.";
static const QString kRefused = "2 4|!username or password is not matched.";
static const QString kKilled = "|worker thread is killed.\n";

static const struct
{
    const char *name;
    VPNClient::TYPE type;
    QList<QByteArray> scripts;
    QString outcome; ///< the states, then the errors (with "!") and notes, then the byte counts
    int downScripts = 0;
} kCases[] = {
    {"does not start", kOpenVPN, {}, "2 4|!start openvpn process failed."},
    {"says nothing", kOpenVPN, {"exit 0"}, kConnectError},
    {"is killed while connecting", kOpenVPN, {"kill -9 $$"}, kConnectError, 1},
    {"half a marker", kOpenVPN, {"printf 'Initialization Sequence Com'; sleep 0.3; echo pleted"}, kConnectError},
    {"errors", kOpenVPN, {kUp.chopped(1) + " With Errors\n" + kHang}, "2 4|!can not create vpn tunnel.", 1},
    {"prompts", kOpenVPN, {kPrompts + kUp + "go"}, kTunnelError},
    {"is killed while connected", kOpenVPN, {kUp + "go\nkill -9 $$"}, kTunnelError},
    {"cancel, signals ignored", kOpenVPN, {"trap '' TERM INT\nwhile :; do sleep 0.1; done"}, "2 1 0", 1},
    {"cancel, prompts without end", kOpenVPN, {"while :; do echo Auth Username:; done"}, "2 1 0", 1},

    {"refuses and hangs", kL2TP, {"echo 'Error 691'\n" + kHang}, "2 4|!Error 691\n"},
    {"ends", VPNClient::IKEV2, {kDialled, "echo Recv 5; echo Send x"}, "2 3 4|!unexpected vpn disconnected.|5/0"},
    {"cancel", kL2TP, {kHang, {}, "kill $(head -1 \"$app/pids\")"}, "2 1 0|Connection canceled."},
    {"cancel, the stop hangs", kL2TP, {kHang, {}, kHang}, "2 1 0" + kKilled},
    {"close, the stop hangs", kL2TP, {kDialled, kCounts, kHang}, "2 3 1 0" + kKilled + "|5/7"},
    {"close, no stop", kL2TP, {kDialled, kCounts + "chmod a-x \"$0\""}, "2 3 1 4 0|" + kStartError + "|5/7"},

    {"does not start", kSstp, {}, "2 4|" + kStartError},
    {"its end is not reported, connected", kSstp, {"echo remote IP address 10.0.0.1 >> \"$log\"\ngo"}, "2 3"},
    {"second look", kSstp, {"echo a > \"$log\"; sleep 1; echo authentication failed >> \"$log\"; sleep 4"}, kRefused},
};

/// The worker's paths against stand-ins for the helpers, each of one behaviour. The stand-in runs the case's scripts:
/// the first one to connect, the other ones when the service helper is asked for the status and to hang up. They find
/// the application folder in $app; "go" waits until open() has returned. This file makes one program a helper.
class PathsTest : public QObject
{
    Q_OBJECT

private slots:
    void path()
    {
        for (const auto &[name, type, scripts, outcome, downScripts] : kCases) {
            if (VPNCOMPOSE[type] != KORVAN_HELPER) {
                continue;
            }
            prepare(scripts);
            putFile(appPath("/options"), name);
            {
                TestClient client;
                bool closed = !outcome.contains(" 1 ");
                if (!closed) {
                    QTimer::singleShot(500, &client, [&client, &closed] { closed = client.close(); });
                }
                COMPARE_CASE(name, client.openWith(type, {}, "j\"ö\\", " p$w "), outcome.startsWith("2 3"));
                putFile(appPath("/go"), {});
                QTRY_VERIFY_WITH_TIMEOUT(closed && client.isFinished(), 20000);
                QCoreApplication::processEvents(); // delivers what the worker said last
                QStringList came(client.states.join(' '));
                came += client.messages.filter(QRegularExpression("ERROR|canceled|killed"));
                came += client.counts() == "0/0" ? QStringList() : QStringList(client.counts());
                COMPARE_CASE(name, came.join('|').replace("[ERROR]", "!"), outcome);
            }
            QTRY_COMPARE_WITH_TIMEOUT(fileBytes(appPath("/down")), QByteArray("C\n").repeated(downScripts), 20000);
            for (const QByteArray &pid : fileBytes(appPath("/pids")).split('\n')) {
                QVERIFY2(pid.isEmpty() || !QFile::exists("/proc/" + pid + "/stat"), "a helper is left");
            }
            if (type == VPNClient::SSTP) { // what was installed first stays
                QCOMPARE(fileBytes("/etc/ppp/options"), QByteArray("does not start"));
            }
        }
    }

private:
    static void prepare(const QList<QByteArray> &scripts)
    {
        const QByteArray app = "app='" + appPath("").toUtf8() + "'\n";
        putScript(appPath("/down.sh"), app + "echo $LC_ALL >> \"$app/down\"\n");
        putScript(appPath(KORVAN_HELPER), app +
                                              "log=\"$app/vpnlog.txt\"\necho $$ >> \"$app/pids\"\nwhich=0\n"
                                              "go() { until [ -e \"$app/go\" ]; do sleep 0.05; done; }\n"
                                              "[[ $0 = */compose4 ]] && case $# in 2) which=1 ;; 1) which=2 ;; esac\n"
                                              "source \"$app/script$which\"\n");
        if (scripts.isEmpty()) {
            QFile::setPermissions(appPath(KORVAN_HELPER), QFile::ReadOwner);
        }
        for (int i = 0; i < 3; ++i) {
            putFile(appPath("/script%1").arg(i), scripts.value(i));
        }
        for (const char *file : {"/go", "/down", "/pids"}) {
            QFile::remove(appPath(file));
        }
        putFile(appPath("/vpnlog.txt"), "remote IP address of an earlier connection\n");
    }
};

int main(int argc, char **argv)
{
    // The SSTP path writes below /etc: it gets one of its own.
    if (KORVAN_HELPER == QByteArray("/composec") &&
        (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
         mount("tmpfs", "/etc", "tmpfs", 0, nullptr) != 0)) {
        std::puts("SKIPPED WHOLE TEST: it needs root, for an /etc of its own");
        return 0;
    }
    qputenv("LC_ALL", "C.UTF-8");
    QCoreApplication application(argc, argv);
    PathsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "PathsTest.moc"
