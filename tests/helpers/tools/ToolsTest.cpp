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
    const QByteArray good = R"({Hide = 0; Path = "/opt/Korvan.app";})";
    QTest::newRow("empty") << QByteArray("()") << Words{} << 0;
    QTest::newRow("one") << "(" + good + ")" << Words{"/opt/Korvan.app"} << 0;
    QTest::newRow("twice the same") << "(" + good + "," + good + ")" << Words{"/opt/Korvan.app"} << 0;
    QTest::newRow("printed over lines") << QByteArray("(\n  {\n  Hide = 1;\n  Path = /a/Korvan.app;\n  }\n)\n")
                                        << Words{"/a/Korvan.app"} << 0;
    QTest::newRow("brace and backslash in a path")
        << QByteArray(R"(({Path = "/a}b\c/Korvan.app";}))") << Words{"/a}b\\c/Korvan.app"} << 0;
    QTest::newRow("quote in a path") << R"(({Hide = 0; Path = "/a"b/Korvan.app";},)" + good + ")"
                                     << Words{"/opt/Korvan.app"} << 1;
    QTest::newRow("not closed") << R"(({Hide = 0; Path = "/a/Korvan.app"; ,)" + good << Words{"/opt/Korvan.app"} << 1;
    QTest::newRow("cut off") << "(" + good.chopped(3) << Words{} << 1;
    QTest::newRow("no path") << QByteArray(R"(({Hide = 0;},{Path = "";},{Path = "b/Korvan.app";}))") << Words{} << 3;
    QTest::newRow("line end in a path") << QByteArray("({Path = \"/a\nExec=/bin/sh/Korvan.app\";})") << Words{} << 1;
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
    QTest::newRow("none") << Words{} << std::string("\"\" is no server");
    QTest::newRow("server is an option")
        << Words{"--ca-cert=/tmp/mine"} << std::string("\"--ca-cert=/tmp/mine\" is no server");
    QTest::newRow("option that runs a command")
        << Words{"vpn.example", "connect", "reboot"} << std::string("can not use the argument \"connect\"");
    QTest::newRow("mtu is none") << Words{"vpn.example", "mtu", "plugin"}
                                 << std::string("can not use the argument \"mtu\"");
    QTest::newRow("value is missing") << Words{"vpn.example", "logfile"}
                                      << std::string("can not use the argument \"logfile\"");
    QTest::newRow("password too long") << Words{"vpn.example", "--password", std::string(256, 'x')}
                                       << std::string("the password is longer than 255 bytes");
}

void ToolsTest::refusesSstpArguments()
{
    QFETCH(Words, arguments);
    QFETCH(std::string, problem);
    QCOMPARE(parseSstpArguments(arguments).problem, problem);
}

QTEST_GUILESS_MAIN(ToolsTest)

#include "ToolsTest.moc"
