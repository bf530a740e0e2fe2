# shellcheck shell=bash
# What scripts that test the network have in common. Sourced as root in namespaces of the script's own.

export LC_ALL=C

# is EXPECTED COMMAND...: runs the command, prints a complaint unless it printed exactly that (trimmed).
is() {
    local expected=$1 printed
    shift
    printed=$("$@" 2>&1 | sed 's/ *$//')
    [[ $printed == "$expected" ]] || echo "line ${BASH_LINENO[*]}: $* printed: $printed instead of: $expected"
}

# await COMMAND...: waits until the command succeeds, for a minute at most; then prints a complaint.
await() {
    local limit=$((SECONDS + 60))
    until "$@" >/dev/null 2>&1; do
        if [[ $SECONDS -ge $limit ]]; then
            echo "line ${BASH_LINENO[*]}: not in time: $*"
            return 1
        fi
        sleep 0.01
    done
}

# answers HOST [OPTION...]: prints whether the host answers to ping, with these options of ping.
answers() { /usr/bin/ping "${@:2}" -c1 -W1 "$1" >/dev/null 2>&1 && echo yes || echo no; }

# own_machine: an empty /run, an /etc/resolv.conf whose name server nobody answers for, the loopback interface up.
own_machine() {
    mount -t tmpfs tmpfs /run && mkdir /run/netns && mount -t sysfs sysfs /sys &&
        echo 'nameserver 192.0.2.53' >/run/resolv.conf && mount --bind /run/resolv.conf /etc/resolv.conf &&
        ip link set lo up
}

# uplink NAME N: makes the interface NAME, 198.51.N.2/24 and fd51:N::2/64, behind which a router answers for 198.51.N.1,
# 203.0.113.9, fd51:N::1 and 2001:db8::9; no default route.
uplink() {
    ip netns add "router-$1"
    # Ends with different numbers get their carrier at once; the kernel lets others wait for up to a second.
    ip link add "$1" index "10$2" type veth peer name lan netns "router-$1"
    ip -n "router-$1" -batch - <<-END
	link set lo up
	link set lan up
	address add 198.51.$2.1/24 dev lan
	address add 203.0.113.9/32 dev lo
	address add fd51:$2::1/64 dev lan nodad
	address add 2001:db8::9/128 dev lo nodad
	END
    ip address add "198.51.$2.2/24" dev "$1"
    ip address add "fd51:$2::2/64" dev "$1" nodad
    ip link set "$1" up
    await grep -q up "/sys/class/net/$1/operstate"
}
