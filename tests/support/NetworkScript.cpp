#include "tests/support/NetworkScript.h"

#include <QProcess>

static constexpr char kPrelude[] = R"sh(
mount -t tmpfs tmpfs /run && mkdir /run/netns && mount -t sysfs sysfs /sys || exit 1
echo 'nameserver 192.0.2.53' >/run/resolv.conf && mount --bind /run/resolv.conf /etc/resolv.conf || exit 1
export LC_ALL=C
ip link set lo up
uplink() {
    ip netns add "router-$1"
    # Ends with different numbers get their carrier at once; the kernel lets others wait for up to a second.
    ip link add "$1" index "10$2" type veth peer name lan netns "router-$1"
    ip -n "router-$1" link set lo up
    ip -n "router-$1" link set lan up
    ip -n "router-$1" address add "198.51.$2.1/24" dev lan
    ip -n "router-$1" address add 203.0.113.9/32 dev lo
    ip -n "router-$1" address add "fd51:$2::1/64" dev lan nodad
    ip -n "router-$1" address add 2001:db8::9/128 dev lo nodad
    ip address add "198.51.$2.2/24" dev "$1"
    ip address add "fd51:$2::2/64" dev "$1" nodad
    ip link set "$1" up
    until grep -q up "/sys/class/net/$1/operstate"; do sleep 0.01; done
}
is() {
    local expected=$1 printed
    shift
    printed=$("$@" 2>&1 | sed 's/ *$//')
    [[ $printed == "$expected" ]] || echo "line ${BASH_LINENO[*]}: $* printed: $printed instead of: $expected"
}
)sh";

QByteArray runNetworkScript(const QByteArray &script)
{
    QProcess shell;
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.start("unshare", QString("--net --mount --pid --fork --kill-child --mount-proc /bin/bash -s").split(' '));
    shell.write(kPrelude + script);
    shell.closeWriteChannel();
    const bool ends = shell.waitForFinished(60000);
    return shell.readAll().trimmed() + (ends ? "" : "\nTIMED OUT");
}
