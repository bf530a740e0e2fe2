#include "common/AppPath.h"
#include "route/DefaultGateway.h"
#include "route/DefaultRoute.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

/// The tools are stand-ins, placed first in PATH, that note the language and their arguments and print what the test
/// says.
class RouteTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { qputenv("PATH", QFile::encodeName(appPath("/fake")) + ":/usr/bin:/bin"); }
    void gateway()
    {
        const std::pair<QByteArray, const char *> cases[] = {
            {"Routing tables\n\ndefault link#4 UCS utun0\ndefault fe80::1 UGc\ndefault      10.0.0.1   UGSc\n",
             "10.0.0.1"},
            {"x\ndefault 10.0.0.1", "10.0.0.1"},
            {"x\n default 10.0.0.1 UG\nDefault 10.0.0.1 UG\ndefault\n", ""},
            {QByteArray("x\n\0default 10.0.0.1 UG\n", 25), ""},
        };
        for (const auto &[table, found] : cases) {
            toolPrints("netstat", table);
            COMPARE_CASE(table, GetDefaultGateway(), found);
        }
        QCOMPARE(fileBytes(appPath("/calls")), "C -r\n");
    }

    void primitives()
    {
        toolPrints("route", " OK! (but: error)\n");
        QVERIFY(routeAddDefaultRoute("10.0.0.1") == 1 && routeSetDefaultRoute(nullptr) == 1 &&
                routeDelDefaultRoute() == 1);
        QCOMPARE(
            fileBytes(appPath("/calls")),
            "C add 0.0.0.0 mask 0.0.0.0 10.0.0.1\nC change 0.0.0.0 mask 0.0.0.0 \nC delete 0.0.0.0 mask 0.0.0.0\n");
        toolPrints("route", "ok! Network is unreachable\n");
        QCOMPARE(routeAddDefaultRoute("10.0.0.1"), -1);
        qputenv("PATH", "/nowhere");
        QVERIFY(GetDefaultGateway().isEmpty() && routeDelDefaultRoute() == -1);
    }

    void readsTheGatewayColumn()
    {
        const std::pair<QByteArray, QByteArray> cases[] = {
            {"Network Mask Gateway\n 0.0.0.0   0.0.0.0   10.0.0.1  eth0\n", "1 10.0.0.1"},
            {"0.0.0.0 0.0.0.0 ", "-1 "},
            {"abcdefgh ijklmnopq rs", "1 nopq"}, // no such address: cut at 7 twice
            {"0.0.0.0 0.0.0.0 " + QByteArray(1000, '9'), "1 " + QByteArray(kGatewayBufferSize - 1, '9')},
        };
        for (const auto &[output, expected] : cases) {
            toolPrints("route", output);
            QByteArray gateway(2000, '\0');
            const int status = routeGetDefaultRoute(gateway.data());
            COMPARE_CASE(output, QByteArray::number(status) + ' ' + gateway.constData(), expected);
        }
    }

private:
    static void toolPrints(const char *tool, const QByteArray &output)
    {
        putFile(appPath("/calls"), "");
        putFile(appPath("/output"), output);
        putScript(appPath("/fake/") + tool, "cd \"${0%/*}/..\"; echo \"$LC_ALL $*\" >>calls; cat output");
    }
};

QTEST_GUILESS_MAIN(RouteTest)
#include "RouteTest.moc"
