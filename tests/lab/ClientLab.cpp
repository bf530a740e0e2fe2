#include "tests/lab/ClientLab.h"

#include "common/AppPath.h"

#include <cstdio>

/// All that a connection may change: routes, rules, packet filter, name servers, links.
static QByteArray networkState()
{
    return inHome("ip route; ip -6 route | grep -v ' expires '; ip rule; ip route show table 19311 2>/dev/null; "
                  "nft list ruleset; cat /etc/resolv.conf; ls /sys/class/net; ls -A /run/korvan 2>/dev/null | "
                  "grep -vE '^(last-remote|.*lock)$'");
}

ClientLab::ClientLab() : m_network(networkState())
{
    // Not the state of the bundle's own runs.
    inHome("cp -a '" KORVAN_BUNDLE "'/{Korvan,compose,compose4,up.sh,down.sh,options,snd} '" + appPath("/").toUtf8() +
           "'");
}

ClientLab::~ClientLab()
{
    end();
    QVERIFY(networkIsAsBefore());
}

bool ClientLab::breakTunnel()
{
    find<QAbstractButton>("cbAutoReconn")->setChecked(false);
    expectKillSwitch();
    kill(openVPN(), SIGTERM);
    return QTest::qWaitFor([this] { return boxes.left() == 0; }, 60000) && isDisconnected();
}

bool ClientLab::networkIsAsBefore() const
{
    if (QTest::qWaitFor([this] { return networkState() == m_network; }, 60000)) {
        return true;
    }
    std::printf("the network is now\n%s\nand was\n%s\n", networkState().constData(), m_network.constData());
    return false;
}

QByteArray whereabouts(const QByteArray &curlOptions)
{
    return inHome(
        "curl -s -m 2 " + curlOptions +
        " http://ip.korvan.example/testip.php | sed -n 's/.*in \\(.*\\)? .*: \\([0-9a-f.:]*\\)<.*/\\2, \\1/p'");
}

pid_t openVPN()
{
    // The servers' machines have network namespaces of their own.
    return inHome("for p in $(pgrep -x openvpn); do [ /proc/$p/ns/net -ef /proc/self/ns/net ] && echo $p; done")
        .toInt();
}

LeakWatch::LeakWatch()
{
    inHome("ip netns exec world nft 'table inet leaks; delete table inet leaks; table inet leaks { "
           "counter outside {}; chain input { type filter hook input priority 0; "
           "iifname home ip daddr { 203.0.113.10, 203.0.113.30 } counter name outside; "
           "iifname home ip6 daddr 2001:db8:113::10 counter name outside; }; }'");
    senders.start("bash", {"-c", "while :; do for host in 203.0.113.10 203.0.113.30 2001:db8:113::10; do "
                                 "echo x >/dev/udp/$host/9; done; read -t .002 <> <(:); done 2>/dev/null"});
    senders.waitForStarted();
}
