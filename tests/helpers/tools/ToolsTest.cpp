#include "helpers/composec/SstpArguments.h"
#include "helpers/tools/LoginItems.h"

#include <QtTest>

using Words = std::vector<std::string>;
Q_DECLARE_METATYPE(Words)
Q_DECLARE_METATYPE(std::string)

/// The parts of the tools that start nothing.
class ToolsTest : public QObject
{
    Q_OBJECT

private slots:
    void readsLoginItems_data();
    void readsLoginItems();
    void quotesTheProgram();
    void translatesSstpArguments();
    void refusesSstpArguments_data();
    void refusesSstpArguments();
};

void ToolsTest::readsLoginItems_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<Words>("bundles");
    QTest::addColumn<int>("problems");
    const auto row = [](const char *name, const QByteArray &list, const Words &bundles, int problems) {
        QTest::newRow(name) << list << bundles << problems;
    };
    const QByteArray good = R"({Hide = 0; Path = "/opt/Korvan.app";})";
    row("empty", "()", {}, 0);
    row("one", "(" + good + ")", {"/opt/Korvan.app"}, 0);
    row("twice the same", "(" + good + "," + good + ")", {"/opt/Korvan.app"}, 0);
    row("over lines", "(\n  {\n  Hide = 1;\n  Path = /a/Korvan.app;\n  }\n)\n", {"/a/Korvan.app"}, 0);
    row("brace, backslash", R"(({Path = "/a}b\c/Korvan.app";}))", {"/a}b\\c/Korvan.app"}, 0);
    row("quote", R"(({Hide = 0; Path = "/a"b/Korvan.app";},)" + good + ")", {"/opt/Korvan.app"}, 1);
    row("not closed", R"(({Hide = 0; Path = "/a/Korvan.app"; ,)" + good, {"/opt/Korvan.app"}, 1);
    row("cut off", "(" + good.chopped(3), {}, 1);
    row("no path", R"(({Hide = 0;},{Path = "";},{Path = "b/Korvan.app";}))", {}, 3);
    row("line end in a path", "({Path = \"/a\nExec=/bin/sh/Korvan.app\";})", {}, 1);
}

void ToolsTest::readsLoginItems()
{
    QFETCH(QByteArray, list);
    QFETCH(Words, bundles);
    QFETCH(int, problems);
    const LoginItems items = parseLoginItems(list.toStdString());
    QCOMPARE(items.bundles, bundles);
    QCOMPARE(int(items.problems.size()), problems);
}

void ToolsTest::quotesTheProgram()
{
    QVERIFY(desktopEntry(R"(/a b/"$%`\/Korvan.app)")
                .find("\nExec=\"/a b/\\\\\"\\\\$%%\\\\`\\\\\\\\/Korvan.app/Contents/MacOS/Korvan\" -hide\n") !=
            std::string::npos);
    QVERIFY(desktopEntry("/opt/korvan/Korvan.app").find("\nExec=\"/usr/bin/korvan\" -hide\n") != std::string::npos);
}

void ToolsTest::translatesSstpArguments()
{
    const SstpRequest request = parseSstpArguments(
        {"--user", "-ada", "--password", "a b\"c", "vpn.example", "--log-level", "3", "--debug", "usepeerdns",
         "defaultroute", "refuse-pap", "refuse-eap", "noauth", "mtu", "1400", "logfile", "/a b/vpnlog.txt"});
    QCOMPARE(request.problem, std::string());
    QCOMPARE(request.password, std::string("a b\"c"));
    QCOMPARE(sstpcCommand(request, 7), (Words{"/usr/sbin/sstpc",
                                              "--log-stderr",
                                              "--log-level",
                                              "3",
                                              "--save-server-route",
                                              "vpn.example",
                                              "--",
                                              "user",
                                              "-ada",
                                              "plugin",
                                              "passwordfd.so",
                                              "passwordfd",
                                              "7",
                                              "debug",
                                              "usepeerdns",
                                              "defaultroute",
                                              "replacedefaultroute",
                                              "refuse-pap",
                                              "refuse-eap",
                                              "noauth",
                                              "mtu",
                                              "1400",
                                              "logfile",
                                              "/a b/vpnlog.txt"}));
}

void ToolsTest::refusesSstpArguments_data()
{
    QTest::addColumn<Words>("arguments");
    QTest::addColumn<std::string>("problem");
    const auto row = [](const char *name, const Words &arguments, const std::string &problem) {
        QTest::newRow(name) << arguments << problem;
    };
    row("none", {}, "\"\" is no server");
    row("server is an option", {"--ca-cert=/tmp/mine"}, "\"--ca-cert=/tmp/mine\" is no server");
    row("runs a command", {"vpn.example", "connect", "reboot"}, "can not use the argument \"connect\"");
    row("mtu is none", {"vpn.example", "mtu", "plugin"}, "can not use the argument \"mtu\"");
    row("value is missing", {"vpn.example", "logfile"}, "can not use the argument \"logfile\"");
    row("password too long", {"a", "--password", std::string(256, 'x')}, "the password is longer than 255 bytes");
}

void ToolsTest::refusesSstpArguments()
{
    QFETCH(Words, arguments);
    QFETCH(std::string, problem);
    QCOMPARE(parseSstpArguments(arguments).problem, problem);
}

QTEST_GUILESS_MAIN(ToolsTest)

#include "ToolsTest.moc"
