#include "common/AppPath.h"
#include "platform/LoginItems.h"
#include "platform/SingleInstance.h"
#include "platform/Tool.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

class PlatformTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("PATH", QFile::encodeName(appPath("/fake")) + ":/usr/bin:/bin"); }
    void tools()
    {
        qputenv("LC_ALL", "de_DE.UTF-8");
        const std::tuple<const char *, QByteArray, QByteArray> cases[] = {
            {"speaks English, arguments stay whole", "echo \"$LC_ALL|$1|$2\"; exit 3", "ended 3 C|a b|$(id)"},
            {"hangs", "trap '' TERM; echo half; exec sleep 60", "killed -1 half"},
            {"prints much", "head -c 300000 /dev/zero | tr '\\0' x", "ended 0 " + QByteArray(300000, 'x')},
        };
        const QStringList words = {"a b", "$(id)"};
        for (const auto &[name, body, outcome] : cases) {
            const int limit = outcome.startsWith("killed") ? 500 : kToolLimitMs;
            putScript(appPath("/fake/tool"), body);
            for (const ToolResult &result :
                 {runTool("tool", words, limit), runToolInEventLoop("tool", words, limit)}) {
                const QByteArray end = result.finished ? "ended " : "killed ";
                COMPARE_CASE(name, end + QByteArray::number(result.exitCode) + ' ' + result.output.trimmed(),
                             outcome);
            }
        }
        QVERIFY(!runTool("no-such-tool", {}).started && !runToolInEventLoop("no-such-tool", {}).started);
    }

    /// The "defaults" stand-in keeps its array in a file.
    void loginItems()
    {
        putScript(appPath("/fake/defaults"),
                  "[ \"$2 $3\" = 'loginwindow AutoLaunchedApplicationDictionary' ] || exit 1\n"
                  "cd \"${0%/*}/..\"; [ $1 = read ] && cat stored || printf %s \"$4\" >written");
        const QByteArray missing = "The domain/default pair of (loginwindow, x) does not exist\n";
        const QByteArray app = "{Hide = 0; Path = \"/opt/Korvan.app\";}";
        const QByteArray other = "{\n Hide = 1;\n Path = \"/opt/Other.app\";\n}";
        const std::tuple<const char *, QByteArray, int, QByteArray> cases[] = {
            {"first", missing, 1, app},
            {"twice", "(\n" + app + "\n)", 1, app + "," + app},
            {"remove only the first", "(" + other + "," + app + "," + app + ")", 0, other + "," + app},
            {"broken: no end", "(" + other + ", {Path = x", 0, other},
            {"broken: ends before it begins", "(}" + other + ")", 0, other},
        };
        for (const auto &[name, stored, add, written] : cases) {
            putFile(appPath("/stored"), stored);
            COMPARE_CASE(name, machelpLaunchStartup("/opt/Korvan.app", add, nullptr), 1);
            COMPARE_CASE(name, machelpLaunchStartup("/opt/Korvan.app", add, "reserved"), -1);
            COMPARE_CASE(name, fileBytes(appPath("/written")), "(" + written + ")");
        }
    }

    void lockOfTheInstance()
    {
        QFile::remove(appPath("/instance"));
        SingleInstance first;
        QVERIFY(first.isFirst() && !SingleInstance().isFirst());
        first.release();
        QVERIFY(SingleInstance().isFirst());
        QFile::remove(appPath("/instance"));
        putFile(appPath("/elsewhere"), "untouched");
        QVERIFY(QFile::link(appPath("/elsewhere"), appPath("/instance")));
        SingleInstance().notifyFirst();
        QCOMPARE(fileBytes(appPath("/elsewhere")), "untouched");
        QFile::remove(appPath("/instance"));
    }
};

QTEST_MAIN(PlatformTest)
#include "PlatformTest.moc"
