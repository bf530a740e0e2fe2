# shellcheck shell=bash disable=SC2016,SC2034,SC2154
# A guest in the place of the subscriber's machine of a lab: its card is on the network "home", where the router lends it
# 198.51.100.2. Sourced by a command that "lab run" runs. $guest is the folder of its disks (image.sh).

guest_run=$LAB_DIR/guest
guest_clock=() # how the guest's time goes, as options of the emulator

guest_fail() {
    echo "guest: $*" >&2
    exit 1
}

# The namespace's own card becomes a port of a bridge, with the guest's at the other. The router lends addresses for two
# minutes and answers name queries, as the tunnels' far ends do.
guest_network() {
    mkdir -p "$guest_run"
    ip address flush dev eth0
    ip link add home0 type bridge
    ip link set eth0 master home0
    ip tuntap add guest0 mode tap
    ip link set guest0 master home0
    ip link set guest0 up
    echo 1 >/proc/sys/net/ipv6/conf/home0/disable_ipv6
    ip link set home0 up
    # A guest that wakes from a snapshot must find the router where it was.
    ip -n world link set home down
    ip -n world link set home address 52:54:00:00:51:01
    ip -n world link set home up
    ip -n world address add 2001:db8:51::1/64 dev home nodad
    "$LAB" ctl names
    guest_lend
}
guest_lend() {
    ip netns exec world dnsmasq --keep-in-foreground --conf-file=/dev/null --user=root --pid-file= --port=0 --interface=home \
        --interface=home1 --dhcp-authoritative --dhcp-range=198.51.100.2,198.51.100.2,120 --dhcp-leasefile="$guest_run/leases" \
        --dhcp-option=option:router,198.51.100.1 --dhcp-option=option:dns-server,198.51.100.1 \
        --dhcp-range=set:away,198.51.101.50,198.51.101.50,120 --dhcp-option=tag:away,option:router,198.51.101.1 \
        --enable-ra --dhcp-range=2001:db8:51::,ra-only --log-facility="$guest_run/dhcp.log" &
    guest_router=$!
}

# One more network, with another gateway, where 198.51.101.50 is lent: the bridge "away0".
guest_other_network() {
    "$LAB" ctl uplink veth
    ip address flush dev eth1
    ip link add away0 type bridge
    ip link set eth1 master away0
    echo 1 >/proc/sys/net/ipv6/conf/away0/disable_ipv6
    ip link set away0 up
}

# A second card, in the other network.
guest_second_card() {
    ip tuntap add guest1 mode tap
    ip link set guest1 master away0
    ip link set guest1 up
    guest_monitor "netdev_add tap,id=second,ifname=guest1,script=no,downscript=no"
    guest_monitor "device_add virtio-net-pci,netdev=second,id=card2,mac=52:54:00:00:51:03"
}

# guest_start [SNAPSHOT]: from power on, or as it was when that was taken.
guest_start() {
    local pipe
    for pipe in agent monitor; do
        rm -f "$guest_run/$pipe".{in,out}
        mkfifo "$guest_run/$pipe".{in,out}
    done
    [ -e "$guest/state.qcow2" ] || qemu-img create -q -f qcow2 -F raw -b "$guest/disk.raw" "$guest/state.qcow2"
    nice -n 5 qemu-system-x86_64 -accel tcg,thread=single "${guest_clock[@]}" -cpu max,la57=off -smp 1 -m 1280 -display none -vga std -nodefaults \
        -kernel "$guest/kernel" -initrd "$guest/initrd" -append "root=/dev/vda rw console=ttyS0 quiet" \
        -serial "file:$guest_run/console.log" -device virtio-rng-pci -rtc base=utc \
        -drive "file=$guest/state.qcow2,if=virtio,cache=unsafe" \
        -drive "file=$guest/gifts.raw,if=virtio,format=raw,readonly=on" \
        -netdev tap,id=home,ifname=guest0,script=no,downscript=no -device virtio-net-pci,netdev=home,id=card,mac=52:54:00:00:51:02 \
        -device virtio-serial-pci -chardev "pipe,id=agent,path=$guest_run/agent" \
        -device virtserialport,chardev=agent,name=korvan.agent \
        -chardev "pipe,id=monitor,path=$guest_run/monitor" -mon chardev=monitor,mode=control \
        ${1:+-loadvm "$1"} >"$guest_run/qemu.log" 2>&1 &
    guest_emulator=$!
    exec {guest_agent_in}<>"$guest_run/agent.in" {guest_agent_out}<>"$guest_run/agent.out"
    exec {guest_monitor_in}<>"$guest_run/monitor.in" {guest_monitor_out}<>"$guest_run/monitor.out"
    echo '{"execute": "qmp_capabilities"}' >&"$guest_monitor_in"
    if [ -n "${1:-}" ]; then
        guest_do root "date -s @$(date +%s); ip neigh flush all" >/dev/null
        # With the package the second disk is made anew, this snapshot is not.
        [ "$1" != clean ] || guest_do root 'umount /mnt && mount -o ro /dev/vdb /mnt'
    fi
}

# guest_do PERSON COMMAND: runs it in a shell of that person's, waits for its end and prints what it printed.
guest_do() {
    local status output limit=$((SECONDS + 600))
    printf '%s %s\n' "$1" "$(base64 -w 0 <<<"$2")" >&"$guest_agent_in"
    until read -r -t 0 -u "$guest_agent_out"; do
        kill -0 "$guest_emulator" 2>/dev/null || guest_fail "the emulator has ended: $(cat "$guest_run/qemu.log")"
        [ "$SECONDS" -lt "$limit" ] || guest_fail "no answer to: $2"
        sleep 0.05
    done
    read -r -u "$guest_agent_out" status output
    base64 -d <<<"$output"
    return "$status"
}

# guest_monitor COMMAND: a line for the emulator's console; prints the answer.
guest_monitor() {
    local line
    printf '{"execute": "human-monitor-command", "arguments": {"command-line": "%s"}}\n' "$1" >&"$guest_monitor_in"
    while read -r -t 120 -u "$guest_monitor_out" line; do
        case $line in
            *'"return": {}'*) ;;
            *'"return": "'*) sed 's/^{"return": "//; s/"}[[:cntrl:]]*$//; s/\\r\\n/\n/g; /^$/d' <<<"$line"; return ;;
            *'"error"'*) guest_fail "$1: $line" ;;
        esac
    done
    guest_fail "no answer of the emulator to: $1"
}

# guest_save SNAPSHOT, the clock of the guest stands meanwhile.
guest_save() { guest_monitor "savevm $1"; }

guest_has() { qemu-img snapshot -l "$guest/state.qcow2" 2>/dev/null | awk '{ print $2 }' | grep -qx "$1"; }

# As when the plug is pulled: what was not written to the disk yet is lost.
guest_cut() {
    kill -KILL "$guest_emulator"
    wait "$guest_emulator" 2>/dev/null || true
    exec {guest_agent_in}>&- {guest_agent_out}>&- {guest_monitor_in}>&- {guest_monitor_out}>&-
}
