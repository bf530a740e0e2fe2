#include "common/AppPath.h"
#include "route/DefaultGateway.h"
#include "route/DefaultRoute.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

/// The tools are stand-ins, placed first in PATH, that note their arguments and print what the test says.
class RouteTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("PATH", QFile::encodeName(appPath("/fake")) + ":/usr/bin:/bin"); }
    void gateway();
    void savedGateway();
    void primitives();
    void readsTheGatewayColumn();
    void neverWritesPastTheBuffer();
    void missingToolIsAFailure();

private:
    static void toolPrints(const char *tool, const QByteArray &output);
    /// The language and the arguments of the last call.
    static QByteArray lastCall() { return fileBytes(appPath("/arguments")).trimmed().replace('\n', ' '); }
};

void RouteTest::toolPrints(const char *tool, const QByteArray &output)
{
    putFile(appPath("/output"), output);
    putScript(appPath("/fake/") + tool, "cd \"${0%/*}/..\"; printf '%s\\n' $LC_ALL \"$@\" >arguments; cat output");
}

void RouteTest::gateway()
{
    const std::tuple<const char *, QByteArray, const char *> cases[] = {
        {"one", "Routing tables\n\nDestination Gateway\ndefault      198.51.100.1   UGSc\n", "198.51.100.1"},
        {"interface first", "default link#4 UCS utun0\ndefault 10.0.0.1 UGSc en0\n", "10.0.0.1"},
        {"IPv6 first", "default fe80::1 UGc\ndefault 10.0.0.2 UG\n", "10.0.0.2"},
        {"last token", "x\ndefault 10.0.0.1", "10.0.0.1"},
        {"not at the line's start", "x\n default 10.0.0.1 UG\n", ""},
        {"capital letter", "Default 10.0.0.1 UG\n", ""},
        {"keyword alone", "default\n", ""},
        {"after a NUL", QByteArray("x\n\0default 10.0.0.1 UG\n", 25), ""},
        {"empty", "", ""},
    };
    for (const auto &[name, table, found] : cases) {
        toolPrints("netstat", table);
        COMPARE_CASE(name, GetDefaultGateway(), found);
    }
    QCOMPARE(lastCall(), QByteArray("C -r"));
}

void RouteTest::savedGateway()
{
    QFile::remove(appPath("/defgate"));
    QCOMPARE(LoadDefaultGateway(), QString());
    for (const char *gateway : {"198.51.100.1", ""}) {
        SaveDefaultGateway(gateway);
        QCOMPARE(fileBytes(appPath("/defgate")), QByteArray(gateway));
        QCOMPARE(LoadDefaultGateway(), QString(gateway));
    }
}

void RouteTest::primitives()
{
    toolPrints("route", " OK! (but: error)\n");
    AddGateway("0.0.0.0", "0.0.0.0", "10.0.0.1");
    QCOMPARE(lastCall(), QByteArray("C add 0.0.0.0 mask 0.0.0.0 10.0.0.1"));
    DeleteGateway("0.0.0.0", "0.0.0.0", "10.0.0.1");
    QCOMPARE(lastCall(), QByteArray("C delete 0.0.0.0 mask 0.0.0.0 10.0.0.1"));

    QCOMPARE(routeAddDefaultRoute("10.0.0.1"), 1);
    QCOMPARE(lastCall(), QByteArray("C add 0.0.0.0 mask 0.0.0.0 10.0.0.1"));
    QCOMPARE(routeSetDefaultRoute(nullptr), 1);
    QCOMPARE(fileBytes(appPath("/arguments")), QByteArray("C\nchange\n0.0.0.0\nmask\n0.0.0.0\n\n"));
    QCOMPARE(routeDelDefaultRoute(), 1);
    QCOMPARE(lastCall(), QByteArray("C delete 0.0.0.0 mask 0.0.0.0"));

    toolPrints("route", "ok! Network is unreachable\n");
    QCOMPARE(routeAddDefaultRoute("10.0.0.1"), -1);
}

void RouteTest::readsTheGatewayColumn()
{
    const std::tuple<const char *, const char *, int> cases[] = {
        {"Network Mask Gateway\n 0.0.0.0   0.0.0.0   10.0.0.1  eth0\n", "10.0.0.1", 1},
        {"0.0.0.0 0.0.0.0 10.0.0.1", "10.0.0.1", 1},
        {"0.0.0.0 0.0.0.0 ", "", -1},
        {"abcdefgh ijklmnopq rs", "nopq", 1}, // no such address: cut at 7 twice
        {"", "", -1},
    };
    for (const auto &[output, gateway, status] : cases) {
        toolPrints("route", output);
        char buffer[kGatewayBufferSize] = "";
        COMPARE_CASE(output, routeGetDefaultRoute(buffer), status);
        COMPARE_CASE(output, QByteArray(buffer), gateway);
    }
}

void RouteTest::neverWritesPastTheBuffer()
{
    toolPrints("route", "0.0.0.0 0.0.0.0 " + QByteArray(1000, '9'));
    QByteArray buffer(kGatewayBufferSize + 8, 'X');
    QCOMPARE(routeGetDefaultRoute(buffer.data()), 1);
    QCOMPARE(buffer.mid(kGatewayBufferSize), QByteArray(8, 'X'));
    QCOMPARE(int(qstrlen(buffer.constData())), kGatewayBufferSize - 1);
}

void RouteTest::missingToolIsAFailure()
{
    qputenv("PATH", "/nowhere");
    QCOMPARE(GetDefaultGateway(), QString());
    QCOMPARE(routeDelDefaultRoute(), -1);
    AddGateway("0.0.0.0", "0.0.0.0", "10.0.0.1");
}

QTEST_GUILESS_MAIN(RouteTest)
#include "RouteTest.moc"
