#include "tests/support/NetworkScript.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

/// An /etc of the script's own, and stand-ins for OpenVPN, which run up.sh in OpenVPN's environment and stay:
///     tunnel [NAME=VALUE...]    starts one; $pid is its process
///     down                      down.sh as the program runs it
///     state                     all that up.sh may have changed
constexpr char kSetUp[] = R"sh(
export PATH=/usr/sbin:/usr/bin:/sbin:/bin
bundle=$BUNDLE
cp -a /etc /run/etc; mount --bind /run/etc /etc
uplink e1 1
ip route add default via 198.51.1.1 dev e1
tunnel() {
    rm -f /run/status
    env -i dev=tun0 trusted_ip=203.0.113.9 route_net_gateway=198.51.1.1 foreign_option_1='dhcp-option DNS 198.18.0.1' \
        foreign_option_2='dhcp-option DOMAIN corp.example' "$@" /bin/bash -c 'export daemon_pid=$$
        "$0"/up.sh tun0 1500 0 198.18.0.2 255.255.255.0 init
        echo $? >/run/status; exec sleep 50' "$bundle" &
    pid=$!
    disown
    until [[ -s /run/status ]]; do sleep 0.01; done
}
down() { env -i /bin/bash "$bundle/down.sh"; }
state() {
    stat -c '%N %i %a %U' /etc/resolv.conf; cat /etc/resolv.conf
    ls /etc | grep resolv; ip route; nft list tables; ls /run/korvan
} 2>&1
)sh";

QByteArray run(const QByteArray &script)
{
    return runNetworkScript("BUNDLE=" KORVAN_BUNDLE "\n" + (kSetUp + script)).trimmed();
}

/// Puts a program of this name into /usr/bin that notes its arguments and its input.
QByteArray withProgram(const QByteArray &name)
{
    return "mkdir /run/upper /run/work\n"
           "mount -t overlay overlay -o lowerdir=/usr/bin,upperdir=/run/upper,workdir=/run/work /usr/bin\n"
           "cat >/usr/bin/" +
           name + " <<'END'\n#!/bin/bash\n{ echo \"" + name +
           " $*\"; [[ $1 != -a ]] || cat; } >>/run/calls\nEND\nchmod 755 /usr/bin/" + name + "\n";
}

} // namespace

/// The scripts that OpenVPN runs when a tunnel comes and goes.
class ScriptsTest : public QObject
{
    Q_OBJECT

private slots:
    void restoresTheNameServers_data();
    void restoresTheNameServers();
    void keepsWhatOthersWrote();
    void checksWhatTheServerSent_data();
    void checksWhatTheServerSent();
    void blocksIpv6_data();
    void blocksIpv6();
    void endsTheTunnelThatCanNotBeGuarded();
    void tellsTunnelsApart();
    void notesTheServersAddress_data();
    void notesTheServersAddress();
};

void ScriptsTest::restoresTheNameServers_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("whileUp");
    const QByteArray lines = "search corp.example\nnameserver 198.18.0.1\n";
    const QByteArray mark = "# Korvan's tunnel; ";
    QTest::newRow("file") << QByteArray("chmod 640 /etc/resolv.conf\n")
                          << mark + "the file before: /etc/resolv.conf.korvan\n" + lines;
    QTest::newRow("link") << QByteArray("mv /etc/resolv.conf /run/real; ln -s ../run/real /etc/resolv.conf\n")
                          << mark + "the file before: /etc/resolv.conf.korvan\n" + lines;
    QTest::newRow("link to nowhere") << QByteArray("ln -sf /run/nowhere /etc/resolv.conf\n")
                                     << mark + "the file before: /etc/resolv.conf.korvan\n" + lines;
    QTest::newRow("mounted file") << QByteArray("echo >>/run/resolv.conf; mount --bind /run/resolv.conf "
                                                "/etc/resolv.conf\n")
                                  << mark + "the file before: /run/korvan/resolv.conf\n" + lines;
    QTest::newRow("none") << QByteArray("rm /etc/resolv.conf\n") << mark + "there was no file before\n" + lines;
    QTest::newRow("resolvconf") << withProgram("resolvconf")
                                << "nameserver 192.0.2.53\nresolvconf -a tun0.openvpn\n" + lines;
    QTest::newRow("resolved") << withProgram("resolvectl") +
                                     "mkdir -p /run/systemd/resolve; mv /etc/resolv.conf /run/systemd/resolve/stub\n"
                                     "ln -s /run/systemd/resolve/stub /etc/resolv.conf\n"
                              << QByteArray(
                                     "nameserver 192.0.2.53\nresolvectl status\nresolvectl dns tun0 198.18.0.1\n"
                                     "resolvectl domain tun0 corp.example ~.\n");
}

void ScriptsTest::restoresTheNameServers()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, whileUp);
    // Once ended by OpenVPN itself, which still lives then, and once after OpenVPN was killed.
    const QByteArray output = run(before + R"sh(
        mkdir -m 700 /run/korvan; touch /run/korvan/tunnel-lock
        state >/run/before
        tunnel
        cat /etc/resolv.conf; cat /run/calls 2>/dev/null
        env -i daemon_pid=$pid dev=tun0 script_type=down "$bundle/down.sh" tun0 1500 0 198.18.0.2 255.255.255.0 init
        state | diff /run/before -
        tunnel
        ip route add 203.0.113.9 via 198.51.1.1
        kill -9 $pid; down
        state | diff /run/before -
        down
        state | diff /run/before - && echo restored)sh");
    QCOMPARE(output, whileUp + "restored");
}

void ScriptsTest::keepsWhatOthersWrote()
{
    QCOMPARE(run("tunnel; echo 'nameserver 192.0.2.99' >/run/new; mv /run/new /etc/resolv.conf\n"
                 "kill $pid; down; cat /etc/resolv.conf; ls /etc | grep resolv"),
             QByteArray("nameserver 192.0.2.99\nresolv.conf"));
}

void ScriptsTest::checksWhatTheServerSent_data()
{
    QTest::addColumn<QByteArray>("option");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("IPv6 address") << QByteArray("dhcp-option DNS6 fd00::53") << QByteArray("nameserver fd00::53\n");
    QTest::newRow("domain to search") << QByteArray("dhcp-option DOMAIN-SEARCH b.example")
                                      << QByteArray("search b.example\n");
    QTest::newRow("other option") << QByteArray("dhcp-option NTP 198.18.0.1") << QByteArray();
    for (const char *hostile : {"DNS 300.18.0.1", "DNS 198.18.0.1;reboot", "DNS $(touch${IFS}/run/ran)", "DNS -x",
                                "DOMAIN `touch${IFS}/run/ran`", "DOMAIN a..b", "DOMAIN ../../etc", "DOMAIN *"}) {
        const QByteArray what = QByteArray(hostile).mid(QByteArray(hostile).indexOf(' ') + 1);
        QTest::newRow(hostile) << "dhcp-option " + QByteArray(hostile)
                               << (hostile[1] == 'N' ? "up.sh: no address: '" : "up.sh: no domain: '") + what + "'\n";
    }
}

void ScriptsTest::checksWhatTheServerSent()
{
    QFETCH(QByteArray, option);
    QFETCH(QByteArray, expected);
    QCOMPARE(run("tunnel foreign_option_1='" + option +
                 "' foreign_option_2='dhcp-option DNS 198.18.0.2'\n"
                 "grep -v '#' /etc/resolv.conf; ls /run/ran 2>/dev/null"),
             // The search line stands first in the file, an address before those that came later.
             (expected + "nameserver 198.18.0.2"));
}

void ScriptsTest::blocksIpv6_data()
{
    QTest::addColumn<QByteArray>("tunnel");
    QTest::addColumn<QByteArray>("answers");
    QTest::newRow("none in the tunnel") << QByteArray() << QByteArray("silent silent");
    QTest::newRow("in the tunnel") << QByteArray("ifconfig_ipv6_local=fd00::2") << QByteArray("answers answers");
    QTest::newRow("server on IPv6") << QByteArray("trusted_ip6=2001:db8::9") << QByteArray("answers silent");
}

void ScriptsTest::blocksIpv6()
{
    QFETCH(QByteArray, tunnel);
    QFETCH(QByteArray, answers);
    QCOMPARE(run("try() { /usr/bin/ping -c1 -W1 $1 >/dev/null 2>&1 && echo -n 'answers ' || echo -n 'silent '; }\n"
                 "ip -6 route add default via fd51:1::1 dev e1\n"
                 "tunnel " +
                 tunnel + "; try 2001:db8::9; try fd51:1::1; kill $pid; down; try fd51:1::1"),
             answers + " answers");
}

void ScriptsTest::endsTheTunnelThatCanNotBeGuarded()
{
    QCOMPARE(run("mount --bind /dev/null /usr/sbin/nft\ntunnel 2>/run/errors; tail -1 /run/errors; cat /run/status "
                 "/etc/resolv.conf\n"
                 "tunnel dev=../etc 2>&1; cat /run/status"),
             QByteArray("up.sh: IPv6 can not be blocked; nft is in the package nftables\n1\nnameserver 192.0.2.53\n"
                        "up.sh: no interface name: '../etc'\n1"));
}

void ScriptsTest::tellsTunnelsApart()
{
    // The first one's down.sh comes late, when the second, to the same server, is up.
    QCOMPARE(run(R"sh(
        mkdir -m 700 /run/korvan; touch /run/korvan/tunnel-lock
        state >/run/before
        tunnel; kill -9 $pid
        ip route add 203.0.113.9 via 198.51.1.1
        tunnel foreign_option_1='dhcp-option DNS 198.18.0.2'
        ip route add 203.0.113.9 via 198.51.1.1 && echo "old route was removed"
        down
        grep nameserver /etc/resolv.conf; ip route show 203.0.113.9; nft list tables
        kill -9 $pid; down
        state | diff /run/before -)sh"),
             QByteArray("old route was removed\nnameserver 198.18.0.2\n203.0.113.9 via 198.51.1.1 dev e1 \n"
                        "table ip6 korvan_tunnel"));
}

void ScriptsTest::notesTheServersAddress_data()
{
    QTest::addColumn<QByteArray>("tunnel");
    QTest::addColumn<QByteArray>("noted");
    QTest::newRow("one name") << QByteArray("remote_1=vpn.example remote_2=vpn.example")
                              << QByteArray("vpn.example 203.0.113.9");
    QTest::newRow("its address") << QByteArray("remote_1=203.0.113.9 remote_2=vpn.example") << QByteArray();
    QTest::newRow("several names") << QByteArray("remote_1=vpn.example remote_2=known.example")
                                   << QByteArray("known.example 203.0.113.9");
    QTest::newRow("through a proxy") << QByteArray("remote_1=vpn.example http_proxy_server_1=proxy.example")
                                     << QByteArray();
    QTest::newRow("no name") << QByteArray("'remote_1=vpn.example;reboot'") << QByteArray();
}

void ScriptsTest::notesTheServersAddress()
{
    QFETCH(QByteArray, tunnel);
    QFETCH(QByteArray, noted);
    QCOMPARE(run("mkdir -m 700 /run/korvan; printf '%s\\n' 'old.example 203.0.113.1' 'vpn.example 203.0.113.2' "
                 "'known.example 203.0.113.3' >/run/korvan/last-remote; cp /run/korvan/last-remote /run/before\n"
                 "echo 203.0.113.9 known.example >>/etc/hosts\n"
                 "tunnel " +
                 tunnel + "; diff /run/before /run/korvan/last-remote | grep -o '> .*' | cut -c3-"),
             noted);
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
