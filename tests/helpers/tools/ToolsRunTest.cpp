#include "tests/support/NetworkScript.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

/// The tools netstat and route against real routing tables. Each row is a script that prints nothing when all is
/// well.
class ToolsRunTest : public QObject
{
    Q_OBJECT

private slots:
    void restoresTheTable_data();
    void restoresTheTable();
    void behaves_data();
    void behaves();
};

namespace {

/// Two uplinks, the tools first in PATH, and short names for what is asked often.
constexpr char kSetUp[] = R"sh(
uplink e1 1
uplink e2 2
lockdown() { route delete 0.0.0.0 mask 0.0.0.0 "$@"; }
release() { route add 0.0.0.0 mask 0.0.0.0 "$@"; }
leftovers() { ip rule | grep 19311; ip route show table 19311; nft list tables; ls /run/korvan | grep -v lock; } 2>/dev/null
answers() { /usr/bin/ping "${@:2}" -c1 -W1 "$1" >/dev/null 2>&1 && echo yes || echo no; }
)sh";

QByteArray run(const QByteArray &script)
{
    return runNetworkScript("tools=" KORVAN_BUNDLE "/tools; PATH=$tools:$PATH\n" + script);
}

constexpr char kMarkedPackets[] = R"sh(
ip route add default via 198.51.1.1 dev e1
echo 1 >/proc/sys/net/ipv4/conf/e1/rp_filter # the kernel's check of the sender must not drop the answers
is 'OK!' lockdown 198.51.1.1
is no answers 203.0.113.9
is yes answers 203.0.113.9 -m 19311
is '198.51.1.77 dev e1 table 19311 src 198.51.1.2 mark 0x4b6f uid 0' grep -v cache <(ip route get 198.51.1.77 mark 0x4b6f)
is 'OK!' release 198.51.1.1
is 0 cat /proc/sys/net/ipv4/conf/e1/src_valid_mark
)sh";

constexpr char kIpv6[] = R"sh(
ip route add default via 198.51.1.1 dev e1
ip -6 route add default via fd51:1::1 dev e1
before=$(ip -6 route | sed 's/ *$//')
is yes answers 2001:db8::9
is 'OK!' lockdown 198.51.1.1
for host in 2001:db8::9 fd51:1::1; do is no answers $host; done
ip neighbour flush dev e1
is yes answers 2001:db8::9 -m 19311
is yes answers ::1
is "$before" ip -6 route
is 'OK!' release 198.51.1.1
is yes answers 2001:db8::9
)sh";

/// Stand-ins for ip and nft kill the tool that called them, before or after their work, at each call in turn.
constexpr char kKills[] = R"sh(
ip route add default via 198.51.1.1 dev e1 metric 100
ip route add default via 198.51.2.1 dev e2 metric 600
before=$(ip route | sed 's/ *$//')
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
for command in lockdown release; do
    for when in before after; do
        for ((at = 1, status = 1; status != 0; at++)); do
            [[ $command == lockdown ]] || lockdown 198.51.1.1 >/dev/null
            echo "$at $when" >/run/killing; echo 0 >/run/calls
            $command 198.51.1.1 >/run/said; status=$?
            rm /run/killing
            is 'OK!' release 198.51.1.1
            is "$before" ip route
            is '' leftovers
        done 2>/dev/null
        [[ $at -gt 5 ]] || echo "$command was killed only $at times"
    done
done
)sh";

/// A DHCP client puts a route of its own in place between two deletions.
constexpr char kDeletedAgain[] = R"sh(
ip route add default via 198.51.1.1 dev e1 metric 100
is 'OK!' lockdown 198.51.1.1
is 'OK!' lockdown 198.51.1.1
ip route add default via 198.51.2.1 dev e2 metric 600
is 'OK!' lockdown 198.51.1.1
is '' ip route show default
is $'700 root\n600 root' stat -c '%a %U' /run/korvan /run/korvan/route.journal
is 'OK!' release ''
is $'default via 198.51.1.1 dev e1 metric 100\ndefault via 198.51.2.1 dev e2 metric 600' ip route show default
)sh";

constexpr char kLostInterface[] = R"sh(
ip route add default via 198.51.1.1 dev e1 metric 100
is 'OK!' lockdown 198.51.1.1
ip link del e1
gone='route: can not restore "default via 198.51.1.1 dev e1 metric 100": interface e1 is gone'
is "$gone
route: can not add \"default via 198.51.1.1\": Nexthop has invalid gateway." release 198.51.1.1
ip address add 198.51.1.2/24 dev e2
is "$gone"$'\nOK!' release 198.51.1.1
is 'default via 198.51.1.1 dev e2' ip route show default
is '' leftovers
)sh";

constexpr char kForeignJournal[] = R"sh(
ip route add default via 198.51.1.1 dev e1
echo 'route default via 198.51.2.1 dev e2' >/run/victim
while read -r plant; do
    rm -rf /run/korvan; eval "${plant%%;;*}"
    is "route: /run/korvan${plant##*;;}" lockdown 198.51.1.1
    is "route: /run/korvan${plant##*;;}"$'\nOK!' release 198.51.1.1
    is 'default via 198.51.1.1 dev e1' ip route show default
    is 'route default via 198.51.2.1 dev e2' cat /run/victim
done <<'END'
mkdir -m 700 /run/korvan; ln -s /run/victim /run/korvan/route.journal;;/route.journal: is a link or no folder
mkdir -m 700 /run/korvan; install -o 4711 /run/victim /run/korvan/route.journal;;/route.journal: Operation not permitted
mkdir -p /run/other; ln -s /run/other /run/korvan;;: is a link or no folder
mkdir -m 777 /run/korvan;;: Operation not permitted
END
)sh";

constexpr char kNoJournal[] = R"sh(
is 'route: there is no default route to delete' lockdown 198.51.1.1
is 'route: no deleted route to restore, and "" is no gateway address' release ''
is 'route: can not add "default via 203.0.113.77": Nexthop has invalid gateway.' release 203.0.113.77
for gateway in 198.51.1.1 198.51.1.1 198.51.2.1; do is 'OK!' release $gateway; done
is 'default via 198.51.1.1 dev e1' ip route show default
is 'route: no deleted route to restore, and "" is no gateway address' release ''
)sh";

constexpr char kOtherRequests[] = R"sh(
is '' route print 0.0.0.0 mask 0.0.0.0
is 'route: there is no default route to change' route change 0.0.0.0 mask 0.0.0.0 198.51.2.1
ip route add default via 198.51.1.1 dev e1 proto dhcp metric 100
ip route add default via 198.51.2.1 dev e2 metric 50
is '0.0.0.0 0.0.0.0 198.51.2.1 e2 50 0.0.0.0 0.0.0.0 198.51.1.1 e1 100' echo $(route print 0.0.0.0 mask 0.0.0.0)
is 'OK!' route change 0.0.0.0 mask 0.0.0.0 198.51.1.7
is 'OK!' route add 203.0.113.0 mask 255.255.255.0 198.51.1.1
is 'route: can not add 203.0.113.0/24 via 198.51.1.1: File exists' route add 203.0.113.0 mask 255.255.255.0 198.51.1.1
is 'default via 198.51.1.7 dev e1 metric 50
default via 198.51.1.1 dev e1 proto dhcp metric 100
203.0.113.0/24 via 198.51.1.1 dev e1' grep via <(ip route)
is 'OK!' route delete 203.0.113.0 mask 255.255.255.0
is 'route: can not delete 203.0.113.0/24: No such process' route delete 203.0.113.0 mask 255.255.255.0
usage='route: use add|delete|change|print DESTINATION mask MASK [GATEWAY]'
is "$usage" route
is "$usage" route add 10.0.0.0 netmask 255.0.0.0 198.51.1.1
is "$usage" route flush 0.0.0.0 mask 0.0.0.0
is 'route: "--help" is no gateway address' lockdown --help
is 'route: "1.2.3.4; reboot" is no gateway address' route add 10.0.0.0 mask 255.0.0.0 '1.2.3.4; reboot'
is 'route: "10.0.0.0" with the mask "255.0.255.0" is no destination' route add 10.0.0.0 mask 255.0.255.0 198.51.1.1
is 'route: only root can change routes' setpriv --reuid 4711 --clear-groups "$(command -v route)" delete 0.0.0.0 mask 0.0.0.0
)sh";

constexpr char kNetstat[] = R"sh(
ip route add default dev e1 scope link metric 3
ip route add default via 198.51.2.1 dev e2 metric 600
ip route add default via 198.51.1.1 dev e1 metric 100
ip route add unreachable default metric 1
from=${EPOCHREALTIME/./}
netstat -r >/run/table
took=$((${EPOCHREALTIME/./} - from))
[[ $took -lt 100000 ]] || echo "netstat took $took microseconds"
is 'default link#101 3 e1 default 198.51.1.1 100 e1 default 198.51.2.1 600 e2' echo $(grep ^default /run/table)
)sh";

/// A real ping that prints what it is told to.
constexpr char kPing[] = R"sh(
cat >/run/ping <<'END'
#!/bin/bash
echo $$ "$LC_ALL$LD_PRELOAD$*" >/run/called
printf %s "$(</run/summary)"
while [[ -e /run/hang ]]; do sleep 0.01; done
exit 7
END
chmod 755 /run/ping; mount --bind /run/ping /usr/bin/ping

summary() { echo "$1" >/run/summary; LD_PRELOAD=/lib/none.so ping -c20 vpn.example; echo "status $?"; } 2>/dev/null
is 'rtt min/avg/max/stddev = 10.9/23.7/40.1/5.2 msstatus 7' summary 'rtt min/avg/max/mdev = 10.9/23.7/40.1/5.2 ms'
is '4 packets transmitted, 1 received, 75% packet loss, time 3msstatus 7' \
    summary '4 packets transmitted, 1 received, +1 duplicates, +3 errors, 75% packet loss, time 3ms'
is 'C-c20 -- vpn.example' cut -d' ' -f2- /run/called
is 'ping: use ping -cCOUNT HOST' ping -c1 -f
is 'ping: use ping -cCOUNT HOST' ping -c1x vpn.example

touch /run/hang; rm /run/called
ping -c20 vpn.example >/run/output & tool=$!; disown
until [[ -s /run/called ]]; do sleep 0.01; done
kill -9 $tool
read -r real _ </run/called
while kill -0 $real 2>/dev/null; do sleep 0.01; done # ends with its caller, or this test never does
)sh";

/// A user "ada" with a home folder of her own.
constexpr char kUsers[] = R"sh(
cp /etc/passwd /run/passwd
echo 'ada:x:4711:4711::/run/ada:/bin/sh' >>/run/passwd
mount --bind /run/passwd /etc/passwd
mkdir /run/ada; chown 4711:4711 /run/ada
key="loginwindow AutoLaunchedApplicationDictionary"
missing="The domain/default pair of (${key/ /, }) does not exist"
korvan='{Hide = 0; Path = "/opt/Korvan.app";}'
)sh";

constexpr char kItems[] = R"sh(
is "$missing" d read $key
mkdir -p /run/ada/.config/autostart; cd /run/ada/.config/autostart
echo '[Desktop Entry]' >korvan-own.desktop
chown -R 4711:4711 /run/ada
list="({Hide = 0; Path = \"/a\"b/Korvan.app\";},$korvan,$korvan)"
is 'defaults: can not understand an entry of the list after: {Hide = 0; Path = "/a"' d write $key "$list"
is "$list" d read $key
is '' find /run/ada -type f ! -user 4711
is 2 grep -c desktop <(ls)
is 'Exec="/opt/Korvan.app/Contents/MacOS/Korvan" -hide' grep -h Exec korvan-*
is '' d write $key '()'
is '()' d read $key
is 'korvan-own.desktop' ls
)sh";

constexpr char kPlantedLink[] = R"sh(
export USER=ada
mkdir -m 700 /run/secret; echo secret >/run/secret/login-items
mkdir /run/ada/.config; ln -s /run/secret /run/ada/.config/korvan; ln -s /run/secret /run/ada/.config/autostart
is "$missing" defaults read $key
is 2 grep -c 'Permission denied' <(defaults write $key "($korvan)" 2>&1)
is login-items ls /run/secret
is secret cat /run/secret/login-items
)sh";

/// A stand-in for sstpc prints what it got.
constexpr char kSstp[] = R"sh(
cat >/run/sstpc <<'END'
#!/bin/bash
tr '\0' ' ' </proc/$$/cmdline | sed 's/passwordfd [0-9]*/passwordfd N/'; echo "$LC_ALL $PATH$X"
while [[ $1 != passwordfd ]]; do shift; done; cat <&$2
END
chmod 755 /run/sstpc; mount --bind /run/sstpc /usr/sbin/sstpc
is '/bin/bash /usr/sbin/sstpc --log-stderr --log-level 3 --save-server-route vpn.example -- user ada plugin passwordfd.so passwordfd N noauth C /usr/sbin:/usr/bin:/sbin:/bin
a"b' env X=1 $tools/../composec --user ada --password 'a"b' vpn.example --log-level 3 noauth
umount /usr/sbin/sstpc; mount --bind /dev/null /usr/sbin/sstpc
is 'composec: /usr/sbin/sstpc: Permission denied; it is in the package sstp-client' $tools/../composec vpn.example
)sh";

} // namespace

void ToolsRunTest::restoresTheTable_data()
{
    QTest::addColumn<QByteArray>("routes");
    QTest::addColumn<QByteArray>("leftWhileDeleted");
    const auto row = [](const char *name, const QByteArray &routes, const QByteArray &left = {}) {
        QTest::newRow(name) << routes << left;
    };
    const QByteArray plain = "ip route add default via 198.51.1.1 dev e1 proto dhcp src 198.51.1.2 metric 100\n";
    row("plain", plain);
    row("attributes", "ip route add default via 198.51.1.1 metric 7 mtu lock 1400 initcwnd 20 advmss 1300\n");
    row("two uplinks", plain + "ip route add default via 198.51.2.1 dev e2 metric 600 onlink\n");
    row("spread over both", "ip route add default nexthop via 198.51.1.1 weight 2 nexthop via 198.51.2.1 weight 1\n");
    row("next hop object", "ip nexthop add id 5 via 198.51.1.1 dev e1; ip route add default nhid 5 metric 9\n");
    row("without a gateway", "ip route add default dev e1 scope link metric 3\n");
    row("a tunnel's own stays",
        plain + "ip tuntap add t1 mode tun; ip link set t1 up; ip route add default dev t1 metric 5000\n",
        "default dev t1 scope link metric 5000 linkdown");
    row("a rejecting one stays", plain + "ip route add unreachable default metric 90000\n",
        "unreachable default metric 90000");
}

void ToolsRunTest::restoresTheTable()
{
    QFETCH(QByteArray, routes);
    QFETCH(QByteArray, leftWhileDeleted);
    QCOMPARE(run(kSetUp + routes + "ip route >/run/before\nis 'OK!' lockdown 198.51.1.1\nis '" + leftWhileDeleted +
                 "' ip route show default\nis 'OK!' release 198.51.1.1\nis '' diff /run/before <(ip route)\n"
                 "is '' leftovers"),
             QByteArray());
}

void ToolsRunTest::behaves_data()
{
    QTest::addColumn<QByteArray>("script");
    const auto row = [](const char *name, const QByteArray &script) { QTest::newRow(name) << script; };
    const QByteArray routes = kSetUp;
    row("marked packets find a way", routes + kMarkedPackets);
    row("IPv6 is blocked", routes + kIpv6);
    row("killed at any step", routes + kKills);
    row("deleted again", routes + kDeletedAgain);
    row("interface is lost", routes + kLostInterface);
    row("journal is somebody else's", routes + kForeignJournal);
    row("no journal", routes + kNoJournal);
    row("other requests", routes + kOtherRequests);
    row("netstat", routes + kNetstat);
    row("ping", kPing);
    row("sstpc", kSstp);
    const auto login = [&row](const char *name, const QByteArray &as) {
        row(name, kUsers + ("d() { " + as) + " $(command -v defaults) \"$@\"; }\n" + kItems);
    };
    login("login items of an ordinary user", "setpriv --reuid 4711 --regid 4711 --clear-groups");
    login("login items, set-user-id", "setpriv --ruid 4711 --clear-groups env USER=root");
    login("login items, root for a user", "env USER=ada");
    login("login items through sudo", "env USER=root SUDO_UID=4711");
    row("login items behind a link", QByteArray(kUsers) + kPlantedLink);
}

void ToolsRunTest::behaves()
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
    ToolsRunTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ToolsRunTest.moc"
