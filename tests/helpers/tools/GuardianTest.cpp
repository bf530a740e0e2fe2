#include "tests/support/NetworkScript.h"

#include <QTest>

#include <unistd.h>

/// The program that dies while lock-down has taken the default route away; its stand-in is a shell of that name.
class GuardianTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void putsTheRoutesBack_data();
    void putsTheRoutesBack();
};

void GuardianTest::initTestCase()
{
    if (geteuid() != 0) {
        QSKIP("NEEDS ROOT: nobody watched the routes", "");
    }
}

void GuardianTest::putsTheRoutesBack_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("end");
    QTest::addColumn<QByteArray>("route");
    const QByteArray original = "default via 198.51.1.1 dev eth1 metric 7";
    QTest::newRow("killed") << QByteArray("Korvan") << QByteArray() << QByteArray("kill -KILL $program") << original;
    QTest::newRow("put back before the end")
        << QByteArray("Korvan") << QByteArray("add 0.0.0.0 mask 0.0.0.0 198.51.1.1") << QByteArray("kill $program")
        << original;
    QTest::newRow("a lease is renewed") << QByteArray("Korvan") << QByteArray()
                                        << QByteArray("ip route add default via 198.51.1.1 metric 9; gone; "
                                                      "kill -KILL $program")
                                        << original + "\ndefault via 198.51.1.1 dev eth1 metric 9";
    QTest::newRow("a shell that a person uses is not watched")
        << QByteArray("bash") << QByteArray() << QByteArray("kill -KILL $program") << QByteArray();
}

void GuardianTest::putsTheRoutesBack()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, end);
    const QByteArray again = before.isEmpty() ? QByteArray(":") : "/run/b/tools/route " + before;
    const QByteArray script =
        "uplink eth1 1\n"
        "ip route add default via 198.51.1.1 metric 7\n"
        "mkdir -p /run/b/tools; cp '" KORVAN_BUNDLE "/tools/route' /run/b/tools/\n"
        "cp /bin/bash /run/b/" +
        name +
        "\n"
        "/run/b/" +
        name +
        " -c '/run/b/tools/route delete 0.0.0.0 mask 0.0.0.0 198.51.1.1 >/dev/null\n"
        "/run/b/tools/route delete 0.0.0.0 mask 0.0.0.0 198.51.1.1 >/dev/null\n" +
        again +
        " >/dev/null; touch /run/ready; sleep 60; :' &\n"
        "program=$!\n"
        "until [ -e /run/ready ]; do sleep 0.05; done\n"
        "gone() { until [ -z \"$(ip route show default)\" ]; do sleep 0.05; done; }\n" +
        end +
        "; wait $program 2>/dev/null\n"
        "for ((n = 0; n < 40; n++)); do [ -z \"$(ip route show default)\" ] || break; sleep 0.05; done\n"
        "ip route show default | sed 's/ *$//'\n";
    QTEST(runNetworkScript(script), "route");
}

QTEST_GUILESS_MAIN(GuardianTest)
#include "GuardianTest.moc"
