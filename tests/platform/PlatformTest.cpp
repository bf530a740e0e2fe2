#include "common/AppPath.h"
#include "platform/KillProcess.h"
#include "platform/LoginItems.h"
#include "platform/SingleInstance.h"
#include "platform/Tool.h"
#include "platform/UserBrowser.h"
#include "tests/support/TestFiles.h"

#include <QDesktopServices>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

class PlatformTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void toolSpeaksEnglish();
    void toolsThatMisbehave_data();
    void toolsThatMisbehave();
    void loginItems_data();
    void loginItems();
    void loginItemsWithoutTheTool();
    void oneInstanceIsTold();
    void lockFileThatIsALink();
    void killMatchesTheWholeLine();
    void browserRunsAsTheUser();

private:
    QByteArray m_path;
};

void PlatformTest::initTestCase()
{
    m_path = QFile::encodeName(appPath("/fake")) + ":/usr/bin:/bin";
    qputenv("PATH", m_path);
}

void PlatformTest::toolSpeaksEnglish()
{
    qputenv("LC_ALL", "de_DE.UTF-8");
    putScript(appPath("/fake/tool"), "echo \"$LC_ALL|$1|$2\"");
    const ToolResult result = runTool("tool", {"a b", "$(id)"});
    QVERIFY(result.started && result.finished);
    QCOMPARE(result.output, QByteArray("C|a b|$(id)\n"));
    QCOMPARE(runToolInEventLoop("tool", {}).output, QByteArray("C||\n"));
}

void PlatformTest::toolsThatMisbehave_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("finished");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("fails") << QByteArray("echo half; exit 3") << true << 3 << QByteArray("half\n");
    QTest::newRow("hangs") << QByteArray("trap '' TERM; echo half; exec sleep 60") << false << -1
                           << QByteArray("half\n");
    QTest::newRow("prints only errors") << QByteArray("echo no >&2") << true << 0 << QByteArray();
    QTest::newRow("prints much") << QByteArray("head -c 300000 /dev/zero | tr '\\0' x") << true << 0
                                 << QByteArray(300000, 'x');
}

void PlatformTest::toolsThatMisbehave()
{
    QFETCH(QByteArray, body);
    QFETCH(bool, finished);
    const int limit = finished ? kToolLimitMs : 500;
    putScript(appPath("/fake/tool"), body);
    for (const ToolResult &result : {runTool("tool", {}, limit), runToolInEventLoop("tool", {}, limit)}) {
        QVERIFY(result.started);
        QCOMPARE(result.finished, finished);
        QTEST(result.exitCode, "exitCode");
        QTEST(result.output, "output");
    }
    QVERIFY(!runTool("no-such-tool", {}).started);
    QVERIFY(!runToolInEventLoop("no-such-tool", {}).started);
}

/// The "defaults" stand-in keeps its array in a file.
void PlatformTest::loginItems_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<int>("add");
    QTest::addColumn<QByteArray>("written");
    const QByteArray missing = "The domain/default pair of (loginwindow, x) does not exist\n";
    const QByteArray app = "{Hide = 0; Path = \"/opt/Korvan.app\";}";
    const QByteArray other = "{\n Hide = 1;\n Path = \"/opt/Other.app\";\n}";
    QTest::newRow("first") << missing << 1 << "(" + app + ")";
    QTest::newRow("twice") << "(\n" + app + "\n)" << 1 << "(" + app + "," + app + ")";
    QTest::newRow("remove from nothing") << missing << 0 << QByteArray("()");
    QTest::newRow("remove only the first")
        << "(" + other + "," + app + "," + app + ")" << 0 << "(" + other + "," + app + ")";
    QTest::newRow("remove what is not there") << "(" + other + ")" << 0 << "(" + other + ")";
    QTest::newRow("broken: no end") << "(" + other + ", {Path = x" << 0 << "(" + other + ")";
    QTest::newRow("broken: ends before it begins") << "(}" + other + ")" << 0 << "(" + other + ")";
    QTest::newRow("empty output") << QByteArray() << 1 << "(" + app + ")";
}

void PlatformTest::loginItems()
{
    QFETCH(QByteArray, stored);
    QFETCH(int, add);
    putFile(appPath("/stored"), stored);
    QFile::remove(appPath("/written"));
    putScript(appPath("/fake/defaults"), "[ \"$2 $3\" = 'loginwindow AutoLaunchedApplicationDictionary' ] || exit 1\n"
                                         "[ \"$1\" = read ] && cat '" +
                                             appPath("/stored").toUtf8() + "' || printf %s \"$4\" > '" +
                                             appPath("/written").toUtf8() + "'\n");
    QCOMPARE(machelpLaunchStartup("/opt/Korvan.app", add, nullptr), 1);
    QTEST(fileBytes(appPath("/written")), "written");
    QCOMPARE(machelpLaunchStartup("/opt/Korvan.app", add, "reserved"), -1);
}

void PlatformTest::loginItemsWithoutTheTool()
{
    QFile::remove(appPath("/fake/defaults"));
    QStringList items{"kept"};
    machelpReadLaunch(items);
    QCOMPARE(items, QStringList{"kept"});
    QCOMPARE(machelpLaunchStartup("/opt/Korvan.app", 1, nullptr), 1);
}

void PlatformTest::oneInstanceIsTold()
{
    QFile::remove(appPath("/instance"));
    auto first = std::make_unique<SingleInstance>();
    QVERIFY(first->isFirst());
    QSignalSpy told(first.get(), &SingleInstance::startedAgain);
    for (int start = 1; start <= 2; ++start) {
        SingleInstance second;
        QVERIFY(!second.isFirst());
        second.notifyFirst();
        QTRY_VERIFY(told.count() >= start);
    }
    first.reset();
    SingleInstance next;
    QVERIFY2(next.isFirst(), "the lock goes with its owner");
    next.release();
    QVERIFY(SingleInstance().isFirst());
}

void PlatformTest::lockFileThatIsALink()
{
    QFile::remove(appPath("/instance"));
    putFile(appPath("/elsewhere"), "untouched");
    QVERIFY(QFile::link(appPath("/elsewhere"), appPath("/instance")));
    SingleInstance instance;
    QVERIFY(instance.isFirst());
    instance.notifyFirst();
    QCOMPARE(fileBytes(appPath("/elsewhere")), QByteArray("untouched"));
    QFile::remove(appPath("/instance"));
}

void PlatformTest::killMatchesTheWholeLine()
{
    putScript(appPath("/fake/ps"), "echo \"root 4711 1 0 korvan-victim\"; echo \"root 4712 1 0 other\"");
    putScript(appPath("/fake/kill"), "");
    putScript(appPath("/fake/xargs"), "cat > '" + appPath("/killed").toUtf8() + "'");
    killProcessByName("korvan-victim");
    QCOMPARE(fileBytes(appPath("/killed")), QByteArray("4711\n"));
}

/// xdg-open of the person at the screen: a stand-in that only this namespace of mounts shows.
void PlatformTest::browserRunsAsTheUser()
{
    if (geteuid() != 0) {
        QSKIP("NEEDS ROOT: the browser's rights were not tested", "");
    }
    QTemporaryDir folder;
    QProcess::execute("chmod", {"777", folder.path()});
    const QString seen = folder.path() + "/seen";
    putScript(folder.path() + "/xdg-open", "{ id -u; echo \"$HOME $1\"; } > '" + seen.toUtf8() + ".new'; mv '" +
                                               seen.toUtf8() + ".new' '" + seen.toUtf8() + "'");
    QCOMPARE(unshare(CLONE_NEWNS), 0);
    QCOMPARE(mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
    QCOMPARE(mount(folder.path().toUtf8().constData(), "/usr/local/bin", nullptr, MS_BIND, nullptr), 0);
    qputenv("PKEXEC_UID", "65534");
    const UserBrowser browser;
    QVERIFY(QDesktopServices::openUrl(QUrl("https://help.korvan.example/?a=1&b='2")));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(seen), 30000);
    QCOMPARE(fileBytes(seen), QByteArray("65534\n/nonexistent https://help.korvan.example/?a=1&b='2\n"));
}

QTEST_MAIN(PlatformTest)
#include "PlatformTest.moc"
