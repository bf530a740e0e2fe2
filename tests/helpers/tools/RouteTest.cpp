#include "tests/support/NetworkScript.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

/// What every script here starts with: two uplinks, the tools first in PATH, and short names for what is asked often.
constexpr char kSetUp[] = R"(
export PATH=)" KORVAN_BUNDLE R"(/tools:$PATH
uplink e1 1
uplink e2 2
lockdown() { route delete 0.0.0.0 mask 0.0.0.0 "$@"; }
release() { route add 0.0.0.0 mask 0.0.0.0 "$@"; }
leftovers() { ip rule | grep 19311; ip route show table 19311 2>/dev/null; nft list tables; ls /run/korvan; }
)";

QByteArray run(const QByteArray &script)
{
    return runNetworkScript(kSetUp + script).trimmed();
}

} // namespace

/// The tools netstat and route against real routing tables.
class RouteTest : public QObject
{
    Q_OBJECT

private slots:
    void restoresTheTable_data();
    void restoresTheTable();
    void deletesNothingWithoutARoute();
    void keepsAWayForMarkedPackets();
    void blocksIpv6();
    void survivesAKillAtAnyStep();
    void keepsTheJournalOfTheFirstDeletion();
    void toleratesALostInterface();
    void believesNoForeignJournal_data();
    void believesNoForeignJournal();
    void addsWithoutAJournal();
    void changesAndPrints();
    void refusesBadArguments_data();
    void refusesBadArguments();
    void netstatAnswersAtOnce();
};

void RouteTest::restoresTheTable_data()
{
    QTest::addColumn<QByteArray>("routes");
    QTest::addColumn<QByteArray>("leftWhileDeleted");
    const QByteArray plain = "ip route add default via 198.51.1.1 dev e1 proto dhcp src 198.51.1.2 metric 100\n";
    QTest::newRow("plain") << plain << QByteArray();
    QTest::newRow("attributes") << QByteArray("ip route add default via 198.51.1.1 dev e1 proto static metric 7 "
                                              "mtu lock 1400 initcwnd 20 advmss 1300\n")
                                << QByteArray();
    QTest::newRow("two uplinks") << plain + "ip route add default via 198.51.2.1 dev e2 metric 600 onlink\n"
                                 << QByteArray();
    QTest::newRow("spread over both") << QByteArray("ip route add default metric 5 nexthop via 198.51.1.1 dev e1 "
                                                    "weight 2 nexthop via 198.51.2.1 dev e2 weight 1\n")
                                      << QByteArray();
    QTest::newRow("next hop object") << QByteArray("ip nexthop add id 5 via 198.51.1.1 dev e1\n"
                                                   "ip route add default nhid 5 metric 9 proto static\n")
                                     << QByteArray();
    QTest::newRow("without a gateway") << QByteArray("ip route add default dev e1 scope link metric 3\n")
                                       << QByteArray();
    QTest::newRow("a tunnel's own stays")
        << plain + "ip tuntap add t1 mode tun; ip link set t1 up; ip route add default dev t1 metric 5000\n"
        << QByteArray("default dev t1 scope link metric 5000 linkdown \n");
    QTest::newRow("a rejecting one stays") << plain + "ip route add unreachable default metric 90000\n"
                                           << QByteArray("unreachable default metric 90000 \n");
}

void RouteTest::restoresTheTable()
{
    QFETCH(QByteArray, routes);
    QFETCH(QByteArray, leftWhileDeleted);
    QCOMPARE(run(routes + R"(
        ip route >/run/before
        lockdown 198.51.1.1
        ip route show default
        release 198.51.1.1
        ip route | diff /run/before - && echo restored
        leftovers)"),
             "OK!\n" + leftWhileDeleted + "OK!\nrestored\nroute.lock");
}

void RouteTest::deletesNothingWithoutARoute()
{
    QCOMPARE(run("lockdown 198.51.1.1; leftovers"),
             QByteArray("route: there is no default route to delete\nroute.lock"));
}

void RouteTest::keepsAWayForMarkedPackets()
{
    // The kernel's check of the sender, in both of its forms, must not drop the answers.
    QCOMPARE(run(R"(
        ip route add default via 198.51.1.1 dev e1
        echo 1 >/proc/sys/net/ipv4/conf/e1/rp_filter
        echo 2 >/proc/sys/net/ipv4/conf/e2/rp_filter
        lockdown 198.51.1.1
        ip route get 203.0.113.9 mark 0x4b6f | head -1
        ip route get 203.0.113.9
        ip route get 198.51.1.77 mark 0x4b6f | head -1
        /usr/bin/ping -m 19311 -c1 -W5 203.0.113.9 | grep -o '1 received'
        release 198.51.1.1
        cat /proc/sys/net/ipv4/conf/e1/src_valid_mark)"),
             QByteArray("OK!\n"
                        "203.0.113.9 via 198.51.1.1 dev e1 table 19311 src 198.51.1.2 mark 0x4b6f uid 0 \n"
                        "RTNETLINK answers: Network is unreachable\n"
                        "198.51.1.77 dev e1 table 19311 src 198.51.1.2 mark 0x4b6f uid 0 \n"
                        "1 received\nOK!\n0"));
}

void RouteTest::blocksIpv6()
{
    QCOMPARE(run(R"(
        ip route add default via 198.51.1.1 dev e1
        ip -6 route add default via fd51:1::1 dev e1
        ip -6 route >/run/before
        try() { /usr/bin/ping -c1 -W1 "$1" >/dev/null 2>&1 && echo "$1 answers" || echo "$1 is silent"; }
        try 2001:db8::9
        lockdown 198.51.1.1
        try 2001:db8::9; try fd51:1::1; try ::1
        ip -6 route | diff /run/before - && echo same
        release 198.51.1.1
        try 2001:db8::9)"),
             QByteArray("2001:db8::9 answers\nOK!\n2001:db8::9 is silent\nfd51:1::1 is silent\n::1 answers\nsame\n"
                        "OK!\n2001:db8::9 answers"));
}

void RouteTest::survivesAKillAtAnyStep()
{
    // Stand-ins for ip and nft kill the tool that called them, before or after their work, at each call in turn.
    const QByteArray output = run(R"sh(
        ip route add default via 198.51.1.1 dev e1 metric 100
        ip route add default via 198.51.2.1 dev e2 metric 600
        ip route >/run/before
        for tool in ip nft; do
            real=$(readlink -f "$(command -v $tool)")
            cp "$real" "/run/real-$tool"
            cat >"/run/$tool" <<END
#!/bin/bash
[[ -e /run/killing ]] || exec /run/real-$tool "\$@"
n=\$((\$(</run/calls) + 1)); echo \$n >/run/calls
read -r at when </run/killing
[[ \$n == \$at && \$when == before ]] && kill -9 \$PPID
/run/real-$tool "\$@"; status=\$?
[[ \$n == \$at && \$when == after ]] && kill -9 \$PPID
exit \$status
END
            chmod +x "/run/$tool"
            mount --bind "/run/$tool" "$real"
        done
        kills=0
        for command in lockdown release; do
            for when in before after; do
                for ((at = 1; ; at++)); do
                    [[ $command == lockdown ]] || lockdown 198.51.1.1 >/dev/null
                    echo "$at $when" >/run/killing; echo 0 >/run/calls
                    $command 198.51.1.1 >/dev/null 2>&1; status=$?
                    rm /run/killing
                    release 198.51.1.1 >/run/said
                    ip route | diff /run/before - || { echo "broken: $command $when $at"; cat /run/said; }
                    [[ -z $(leftovers | grep -v route.lock) ]] || { echo "left: $command $when $at"; leftovers; }
                    [[ $status == 0 ]] && break
                    kills=$((kills + 1))
                done
            done
        done 2>/dev/null
        [[ $kills -gt 20 ]] && echo "all repaired")sh");
    QCOMPARE(output, QByteArray("all repaired"));
}

void RouteTest::keepsTheJournalOfTheFirstDeletion()
{
    // Between the two deletions a DHCP client has put a route of its own in place.
    QCOMPARE(run(R"(
        ip route add default via 198.51.1.1 dev e1 metric 100
        lockdown 198.51.1.1
        lockdown 198.51.1.1
        ip route add default via 198.51.2.1 dev e2 metric 600
        lockdown 198.51.1.1
        ip route show default
        cat /run/korvan/route.journal
        stat -c '%a %U' /run/korvan /run/korvan/route.journal
        release ''
        ip route show default)"),
             QByteArray("OK!\nOK!\nOK!\n"
                        "route default via 198.51.2.1 dev e2 metric 600\n"
                        "route default via 198.51.1.1 dev e1 metric 100\n"
                        "700 root\n600 root\n"
                        "OK!\n"
                        "default via 198.51.1.1 dev e1 metric 100 \n"
                        "default via 198.51.2.1 dev e2 metric 600"));
}

void RouteTest::toleratesALostInterface()
{
    QCOMPARE(run(R"(
        ip route add default via 198.51.1.1 dev e1 metric 100
        lockdown 198.51.1.1
        ip link del e1
        release 198.51.1.1
        ls /run/korvan
        ip address add 198.51.1.2/24 dev e2
        release 198.51.1.1
        ip route show default
        leftovers)"),
             QByteArray("OK!\n"
                        "route: can not restore \"default via 198.51.1.1 dev e1 metric 100\": interface e1 is gone\n"
                        "route: can not add \"default via 198.51.1.1\": Nexthop has invalid gateway.\n"
                        "route.journal\nroute.lock\n"
                        "route: can not restore \"default via 198.51.1.1 dev e1 metric 100\": interface e1 is gone\n"
                        "OK!\n"
                        "default via 198.51.1.1 dev e2 \n"
                        "route.lock"));
}

void RouteTest::believesNoForeignJournal_data()
{
    QTest::addColumn<QByteArray>("plant");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("file is a link") << QByteArray(
                                           "mkdir -m 700 /run/korvan; ln -s /run/victim /run/korvan/route.journal")
                                    << QByteArray("/run/korvan/route.journal: is a link or no folder");
    QTest::newRow("file of another user")
        << QByteArray("mkdir -m 700 /run/korvan; cp /run/victim /run/korvan/route.journal; "
                      "chown 4711 /run/korvan/route.journal")
        << QByteArray("/run/korvan/route.journal: Operation not permitted");
    QTest::newRow("folder is a link") << QByteArray("mkdir /run/other; ln -s /run/other /run/korvan")
                                      << QByteArray("/run/korvan: is a link or no folder");
    QTest::newRow("folder for everybody")
        << QByteArray("mkdir -m 777 /run/korvan") << QByteArray("/run/korvan: Operation not permitted");
}

void RouteTest::believesNoForeignJournal()
{
    QFETCH(QByteArray, plant);
    QFETCH(QByteArray, reason);
    QCOMPARE(run("ip route add default via 198.51.1.1 dev e1\n"
                 "echo 'route default via 198.51.2.1 dev e2' >/run/victim\n" +
                 plant + R"(
        lockdown 198.51.1.1
        release 198.51.1.1
        ip route show default
        cat /run/victim)"),
             "route: " + reason + "\nroute: " + reason +
                 "\nOK!\ndefault via 198.51.1.1 dev e1 \n"
                 "route default via 198.51.2.1 dev e2");
}

void RouteTest::addsWithoutAJournal()
{
    QCOMPARE(run(R"(
        release ''
        release 203.0.113.77
        release 198.51.1.1; release 198.51.1.1; release 198.51.2.1
        ip route show default
        release '')"),
             QByteArray("route: no deleted route to restore, and \"\" is no gateway address\n"
                        "route: can not add \"default via 203.0.113.77\": Nexthop has invalid gateway.\n"
                        "OK!\nOK!\nOK!\n"
                        "default via 198.51.1.1 dev e1 \n"
                        "route: no deleted route to restore, and \"\" is no gateway address"));
}

void RouteTest::changesAndPrints()
{
    QCOMPARE(run(R"(
        route print 0.0.0.0 mask 0.0.0.0
        route change 0.0.0.0 mask 0.0.0.0 198.51.2.1
        ip route add default via 198.51.1.1 dev e1 proto dhcp metric 100
        ip route add default via 198.51.2.1 dev e2 metric 50
        route print 0.0.0.0 mask 0.0.0.0 | tr -s ' '
        route change 0.0.0.0 mask 0.0.0.0 198.51.1.7
        route add 203.0.113.0 mask 255.255.255.0 198.51.1.1
        route add 203.0.113.0 mask 255.255.255.0 198.51.1.1
        ip route | grep via
        route delete 203.0.113.0 mask 255.255.255.0 198.51.1.1
        route delete 203.0.113.0 mask 255.255.255.0)"),
             QByteArray("route: there is no default route to change\n"
                        "0.0.0.0 0.0.0.0 198.51.2.1 e2 50\n"
                        "0.0.0.0 0.0.0.0 198.51.1.1 e1 100\n"
                        "OK!\nOK!\n"
                        "route: can not add 203.0.113.0/24 via 198.51.1.1: File exists\n"
                        "default via 198.51.1.7 dev e1 metric 50 \n"
                        "default via 198.51.1.1 dev e1 proto dhcp metric 100 \n"
                        "203.0.113.0/24 via 198.51.1.1 dev e1 \n"
                        "OK!\n"
                        "route: can not delete 203.0.113.0/24: No such process"));
}

void RouteTest::refusesBadArguments_data()
{
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<QByteArray>("answer");
    const QByteArray usage = "route: use add|delete|change|print DESTINATION mask MASK [GATEWAY]";
    QTest::newRow("none") << QByteArray() << usage;
    QTest::newRow("no mask word") << QByteArray("add 10.0.0.0 netmask 255.0.0.0 198.51.1.1") << usage;
    QTest::newRow("unknown action") << QByteArray("flush 0.0.0.0 mask 0.0.0.0") << usage;
    QTest::newRow("gateway is an option")
        << QByteArray("delete 0.0.0.0 mask 0.0.0.0 --help") << QByteArray("route: \"--help\" is no gateway address");
    QTest::newRow("gateway with a command") << QByteArray("add 10.0.0.0 mask 255.0.0.0 '1.2.3.4; reboot'")
                                            << QByteArray("route: \"1.2.3.4; reboot\" is no gateway address");
    QTest::newRow("torn mask") << QByteArray("add 10.0.0.0 mask 255.0.255.0 198.51.1.1")
                               << QByteArray("route: \"10.0.0.0\" with the mask \"255.0.255.0\" is no destination");
    QTest::newRow("not a root user's") << QByteArray("print 1.1.1.1 mask 1.1.1.1; setpriv --reuid 4711 "
                                                     "--clear-groups $(command -v route) delete 0.0.0.0 mask 0.0.0.0")
                                       << QByteArray("route: only root can change routes");
}

void RouteTest::refusesBadArguments()
{
    QFETCH(QByteArray, arguments);
    QFETCH(QByteArray, answer);
    QCOMPARE(run("route " + arguments), answer);
}

void RouteTest::netstatAnswersAtOnce()
{
    const QByteArray output = run(R"(
        ip route add default dev e1 scope link metric 3
        ip route add default via 198.51.2.1 dev e2 metric 600
        ip route add default via 198.51.1.1 dev e1 metric 100
        ip route add unreachable default metric 1
        from=$EPOCHREALTIME
        netstat -r >/run/table
        to=$EPOCHREALTIME
        echo $((${to/./} - ${from/./}))
        grep ^default /run/table | tr -s ' ')");
    const QList<QByteArray> lines = output.split('\n');
    QCOMPARE(lines.mid(1).join('\n'),
             QByteArray("default link#101 3 e1\ndefault 198.51.1.1 100 e1\ndefault 198.51.2.1 600 e2"));
    QVERIFY2(lines[0].toInt() < 100000, qPrintable(lines[0] + " microseconds"));
}

int main(int argc, char **argv)
{
    if (!canUseLab()) {
        return 0;
    }
    QCoreApplication application(argc, argv);
    RouteTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "RouteTest.moc"
