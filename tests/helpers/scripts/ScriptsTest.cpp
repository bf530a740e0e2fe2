#include "tests/support/NetworkScript.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

/// The scripts that OpenVPN runs when a tunnel comes and goes. The tests' own scripts print nothing when all is well.
class ScriptsTest : public QObject
{
    Q_OBJECT

private slots:
    void restoresTheNameServers_data();
    void restoresTheNameServers();
    void checksWhatTheServerSent_data();
    void checksWhatTheServerSent();
    void behaves_data();
    void behaves();
};

namespace {

/// An /etc of the script's own, and stand-ins for OpenVPN, which run up.sh in OpenVPN's environment and stay:
///     tunnel [NAME=VALUE...]    starts one; $pid is its process
///     down                      down.sh as the program runs it
///     state                     all that up.sh may have changed
constexpr char kSetUp[] = R"sh(
export PATH=/usr/sbin:/usr/bin:/sbin:/bin
cp -a /etc /run/etc; mount --bind /run/etc /etc
mkdir -m 700 /run/korvan; touch /run/korvan/tunnel-lock
uplink e1 1
ip route add default via 198.51.1.1 dev e1
tunnel() {
    rm -f /run/status
    env -i dev=tun0 trusted_ip=203.0.113.9 route_net_gateway=198.51.1.1 foreign_option_1='dhcp-option DNS 198.18.0.1' \
        foreign_option_2='dhcp-option DOMAIN corp.example' "$@" /bin/bash -c 'export daemon_pid=$$
        "$0"/up.sh tun0 1500 0 198.18.0.2 255.255.255.0 init
        echo $? >/run/status; exec sleep 50' "$bundle" 2>/run/errors &
    pid=$!
    disown
    until [[ -s /run/status ]]; do sleep 0.01; done
}
down() { env -i /bin/bash "$bundle/down.sh"; }
state() {
    stat -c '%N %i %a %U' /etc/resolv.conf; cat /etc/resolv.conf
    ls /etc | grep resolv; ip route; nft list tables; ls /run/korvan
}
answers() { /usr/bin/ping -c1 -W1 "$1" >/dev/null 2>&1 && echo yes || echo no; }
# program NAME: a program in /usr/bin that notes its arguments and its input
program() {
    mkdir /run/upper /run/work
    mount -t overlay overlay -o lowerdir=/usr/bin,upperdir=/run/upper,workdir=/run/work /usr/bin
    printf '#!/bin/bash\n{ echo "%s $*"; [[ $1 != -a ]] || cat; } >>/run/calls\n' "$1" >"/usr/bin/$1"
    chmod 755 "/usr/bin/$1"
}
)sh";

QByteArray run(const QByteArray &script)
{
    return runNetworkScript("bundle=" KORVAN_BUNDLE "\n" + (kSetUp + script));
}

/// Ended once by OpenVPN, which still lives when it runs down.sh, and once by the program, which has killed OpenVPN.
constexpr char kUpAndDown[] = R"sh(
state >/run/before 2>&1
tunnel
is "$up" cat /etc/resolv.conf $calls
env -i daemon_pid=$pid dev=tun0 script_type=down "$bundle/down.sh" tun0 1500 0 198.18.0.2 255.255.255.0 init
is '' diff /run/before <(state 2>&1)
tunnel
ip route add 203.0.113.9 via 198.51.1.1
kill -9 $pid
for n in 1 2; do down; is '' diff /run/before <(state 2>&1); done
)sh";

constexpr char kSomebodyElseWrites[] = R"sh(
tunnel
echo 'nameserver 192.0.2.99' >/run/new; mv /run/new /etc/resolv.conf
kill $pid; down
is 'nameserver 192.0.2.99' cat /etc/resolv.conf
is resolv.conf grep resolv <(ls /etc)
)sh";

constexpr char kIpv6[] = R"sh(
ip -6 route add default via fd51:1::1 dev e1
tunnel; is no answers 2001:db8::9; kill $pid; down; is yes answers 2001:db8::9
tunnel ifconfig_ipv6_local=fd00::2; is yes answers fd51:1::1; kill $pid; down
tunnel trusted_ip6=2001:db8::9; is yes answers 2001:db8::9; is no answers fd51:1::1
)sh";

constexpr char kNotGuarded[] = R"sh(
tunnel dev=../etc
is $'up.sh: no interface name: \'../etc\'\n1' cat /run/errors /run/status
mount --bind /dev/null /usr/sbin/nft
tunnel
is $'up.sh: IPv6 can not be blocked; nft is in the package nftables\n1' tail -qn1 /run/errors /run/status
is 'nameserver 192.0.2.53' cat /etc/resolv.conf
)sh";

/// The first one's down.sh comes late, when the second, to the same server, is up.
constexpr char kTwoTunnels[] = R"sh(
state >/run/before
tunnel; kill -9 $pid
ip route add 203.0.113.9 via 198.51.1.1
tunnel foreign_option_1='dhcp-option DNS 198.18.0.2'
is '' ip route add 203.0.113.9 via 198.51.1.1
down
is 'nameserver 198.18.0.2' grep nameserver /etc/resolv.conf
is '203.0.113.9 via 198.51.1.1 dev e1' ip route show 203.0.113.9
is 'table ip6 korvan_tunnel' nft list tables
kill -9 $pid; down
is '' diff /run/before <(state)
)sh";

constexpr char kAddressOfTheServer[] = R"sh(
record=/run/korvan/last-remote
echo 203.0.113.9 known.example >>/etc/hosts
attempt() {
    printf '%s\n' 'vpn.example 203.0.113.2' 'known.example 203.0.113.3' >$record
    cp $record /run/old
    tunnel "$@"; kill $pid
    diff /run/old $record | grep '>'
}
is '> vpn.example 203.0.113.9' attempt remote_1=vpn.example remote_2=vpn.example
is '> known.example 203.0.113.9' attempt remote_1=vpn.example remote_2=known.example
is '' attempt remote_1=203.0.113.9 remote_2=vpn.example
is '' attempt remote_1=vpn.example http_proxy_server_1=proxy.example
is '' attempt 'remote_1=vpn.example;reboot'
)sh";

} // namespace

void ScriptsTest::restoresTheNameServers_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("whileUp");
    const QByteArray lines = "search corp.example\nnameserver 198.18.0.1";
    const auto row = [&lines](const char *name, const QByteArray &before, const QByteArray &mark) {
        QTest::newRow(name) << before << "# Korvan\\'s tunnel; " + mark + "\n" + lines;
    };
    const QByteArray renamed = "the file before: /etc/resolv.conf.korvan";
    row("file", "chmod 640 /etc/resolv.conf", renamed);
    row("link", "mv /etc/resolv.conf /run/real; ln -s ../run/real /etc/resolv.conf", renamed);
    row("link to nowhere", "ln -sf /run/nowhere /etc/resolv.conf", renamed);
    row("mounted file", "echo >>/run/resolv.conf; mount --bind /run/resolv.conf /etc/resolv.conf",
        "the file before: /run/korvan/resolv.conf");
    row("none", "rm /etc/resolv.conf", "there was no file before");
    QTest::newRow("resolvconf") << QByteArray("program resolvconf; calls=/run/calls")
                                << "nameserver 192.0.2.53\nresolvconf -a tun0.openvpn\n" + lines;
    QTest::newRow("resolved") << QByteArray("program resolvectl; calls=/run/calls; mkdir -p /run/systemd/resolve\n"
                                            "mv /etc/resolv.conf /run/systemd/resolve/stub\n"
                                            "ln -s /run/systemd/resolve/stub /etc/resolv.conf")
                              << QByteArray("nameserver 192.0.2.53\nresolvectl status\n"
                                            "resolvectl dns tun0 198.18.0.1\nresolvectl domain tun0 corp.example ~.");
}

void ScriptsTest::restoresTheNameServers()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, whileUp);
    QCOMPARE(run(before + "\nup=$'" + whileUp + "'\n" + kUpAndDown), QByteArray());
}

void ScriptsTest::checksWhatTheServerSent_data()
{
    QTest::addColumn<QByteArray>("option");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray rest = "nameserver 198.18.0.2";
    QTest::newRow("IPv6 address") << QByteArray("DNS6 fd00::53") << "nameserver fd00::53\n" + rest;
    QTest::newRow("domain to search") << QByteArray("DOMAIN-SEARCH b.example") << "search b.example\n" + rest;
    QTest::newRow("other option") << QByteArray("NTP 198.18.0.1") << rest;
    for (const char *hostile : {"DNS 300.18.0.1", "DNS 198.18.0.1;reboot", "DNS $(touch${IFS}/run/ran)", "DNS -x",
                                "DOMAIN `touch${IFS}/run/ran`", "DOMAIN a..b", "DOMAIN ../../etc", "DOMAIN *"}) {
        QTest::newRow(hostile) << QByteArray(hostile) << rest;
    }
}

void ScriptsTest::checksWhatTheServerSent()
{
    QFETCH(QByteArray, option);
    QFETCH(QByteArray, expected);
    QCOMPARE(run("tunnel foreign_option_1='dhcp-option " + option +
                 "' foreign_option_2='dhcp-option DNS 198.18.0.2'\nis '" + expected +
                 "' grep -v '#' /etc/resolv.conf\nls /run | grep ran"),
             QByteArray());
}

void ScriptsTest::behaves_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("somebody else writes the file") << QByteArray(kSomebodyElseWrites);
    QTest::newRow("IPv6 is blocked") << QByteArray(kIpv6);
    QTest::newRow("a tunnel that can not be guarded ends") << QByteArray(kNotGuarded);
    QTest::newRow("two tunnels") << QByteArray(kTwoTunnels);
    QTest::newRow("the server's address is noted") << QByteArray(kAddressOfTheServer);
}

void ScriptsTest::behaves()
{
    QFETCH(QByteArray, script);
    QCOMPARE(run(script), QByteArray());
}

int main(int argc, char **argv)
{
    if (!canUseLab()) {
        return 0;
    }
    QCoreApplication application(argc, argv);
    ScriptsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ScriptsTest.moc"
