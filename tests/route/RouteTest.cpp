#include "common/AppPath.h"
#include "route/DefaultGateway.h"
#include "route/DefaultRoute.h"
#include "tests/support/TestFiles.h"

#include <QTest>

/// The tools are stand-ins, placed first in PATH, that note their arguments and print what the row says.
class RouteTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void gateway_data();
    void gateway();
    void savedGateway();
    void primitives();
    void readsTheGatewayColumn_data();
    void readsTheGatewayColumn();
    void neverWritesPastTheBuffer();
    void missingToolIsAFailure();

private:
    void toolPrints(const char *tool, const QByteArray &output);
    QByteArray lastArguments() const { return fileBytes(appPath("/arguments")); }
};

void RouteTest::initTestCase()
{
    qputenv("PATH", QFile::encodeName(appPath("/fake")) + ":/usr/bin:/bin");
}

void RouteTest::toolPrints(const char *tool, const QByteArray &output)
{
    putFile(appPath("/output"), output);
    putScript(appPath("/fake/") + tool, "printf '%s\\n' \"$LC_ALL\" \"$@\" > '" + appPath("/arguments").toUtf8() +
                                            "'\ncat '" + appPath("/output").toUtf8() + "'\n");
}

void RouteTest::gateway_data()
{
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<QString>("gateway");
    const QByteArray head = "Routing tables\n\nDestination Gateway Flags Netif\n";
    QTest::newRow("one") << head + "default            198.51.100.1   UGSc  eth0\n"
                         << "198.51.100.1";
    QTest::newRow("interface first") << head + "default link#4 UCS utun0\ndefault 10.0.0.1 UGSc en0\n"
                                     << "10.0.0.1";
    QTest::newRow("single token") << head + "default 10.0.0.1"
                                  << "10.0.0.1";
    QTest::newRow("IPv6 first") << head + "default fe80::1 UGc\ndefault 10.0.0.2 UG\n"
                                << "10.0.0.2";
    QTest::newRow("not at the line's start") << head + " default 10.0.0.1 UG\n"
                                             << "";
    QTest::newRow("capital letter") << QByteArray("Default 10.0.0.1 UG\n") << "";
    QTest::newRow("keyword alone") << QByteArray("default\n") << "";
    QTest::newRow("after a NUL") << QByteArray("x\n\0default 10.0.0.1 UG\n", 25) << "";
    QTest::newRow("empty") << QByteArray() << "";
}

void RouteTest::gateway()
{
    QFETCH(QByteArray, table);
    toolPrints("netstat", table);
    QTEST(GetDefaultGateway(), "gateway");
    QCOMPARE(lastArguments(), QByteArray("C\n-r\n"));
}

void RouteTest::savedGateway()
{
    QFile::remove(appPath("/defgate"));
    QCOMPARE(LoadDefaultGateway(), QString());
    SaveDefaultGateway("198.51.100.1");
    QCOMPARE(fileBytes(appPath("/defgate")), QByteArray("198.51.100.1"));
    QCOMPARE(LoadDefaultGateway(), QString("198.51.100.1"));
    SaveDefaultGateway("");
    QCOMPARE(fileBytes(appPath("/defgate")), QByteArray());
    QCOMPARE(LoadDefaultGateway(), QString());
}

void RouteTest::primitives()
{
    toolPrints("route", " OK! (but: error)\n");
    AddGateway("0.0.0.0", "0.0.0.0", "10.0.0.1");
    QCOMPARE(lastArguments(), QByteArray("C\nadd\n0.0.0.0\nmask\n0.0.0.0\n10.0.0.1\n"));
    DeleteGateway("0.0.0.0", "0.0.0.0", "");
    QCOMPARE(lastArguments(), QByteArray("C\ndelete\n0.0.0.0\nmask\n0.0.0.0\n\n"));

    QCOMPARE(routeAddDefaultRoute("10.0.0.1"), 1);
    QCOMPARE(lastArguments(), QByteArray("C\nadd\n0.0.0.0\nmask\n0.0.0.0\n10.0.0.1\n"));
    QCOMPARE(routeSetDefaultRoute(nullptr), 1);
    QCOMPARE(lastArguments(), QByteArray("C\nchange\n0.0.0.0\nmask\n0.0.0.0\n\n"));
    QCOMPARE(routeDelDefaultRoute(), 1);
    QCOMPARE(lastArguments(), QByteArray("C\ndelete\n0.0.0.0\nmask\n0.0.0.0\n"));

    toolPrints("route", "ok! Network is unreachable\n");
    QCOMPARE(routeAddDefaultRoute("10.0.0.1"), -1);
}

void RouteTest::readsTheGatewayColumn_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("gateway");
    QTest::newRow("a table") << QByteArray("Network Mask Gateway\n 0.0.0.0   0.0.0.0   10.0.0.1  eth0\n") << 1
                             << QByteArray("10.0.0.1");
    QTest::newRow("last token") << QByteArray("0.0.0.0 0.0.0.0 10.0.0.1") << 1 << QByteArray("10.0.0.1");
    QTest::newRow("nothing behind the mask") << QByteArray("0.0.0.0 0.0.0.0 ") << -1 << QByteArray();
    QTest::newRow("no such address: cut at 7 twice")
        << QByteArray("abcdefgh ijklmnopq rs") << 1 << QByteArray("nopq");
    QTest::newRow("empty") << QByteArray() << -1 << QByteArray();
}

void RouteTest::readsTheGatewayColumn()
{
    QFETCH(QByteArray, output);
    toolPrints("route", output);
    char buffer[kGatewayBufferSize] = "";
    QTEST(routeGetDefaultRoute(buffer), "status");
    QTEST(QByteArray(buffer), "gateway");
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
