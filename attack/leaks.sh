#!/usr/bin/env bash
# The leak table: for each row a lab of its own, in which other programs of the subscriber send all the time, to hosts of
# the world over IPv4 and IPv6 and to the name server of the local network, while something happens. What comes to the
# router outside the tunnel is counted there. "control" is the same with plain OpenVPN in place of Korvan, in a lab of its
# own: a row in which that is 0, or a tunnel that had to come did not, shows nothing.
#   leaks.sh [--build FOLDER] [ROW...]
set -uo pipefail
here=$(realpath "$0")
root=$(dirname "$(dirname "$here")")
build=$root/build/debug
[ "${1:-}" != --build ] || { build=$(realpath "$2"); shift 2; }

# The rows: a name, what may pass (0, "any", or "some": the person must be online again), then what is done, in words of the
# functions below. What comes after "!" is counted.
rows='
nothing happens, locked                     | 0   | up lock ! pause
nothing happens, open                       | 0   | up ! pause
a route of the router, locked               | 0   | up lock ! route
a route of the router, open                 | 0   | up ! route
a claimed subnet, locked                    | 0   | up lock ! subnet24
a claimed subnet, open                      | 0   | up ! subnet24
a quarter of all addresses claimed, locked  | 0   | up lock ! subnet2
an on-link host, locked                     | 0   | up lock ! host
an on-link host, open                       | 0   | up ! host
a route of the server, locked               | 0   | push up lock ! pause
a route of the server, open                 | any | push up ! pause
a second uplink, locked, tunnel killed      | 0   | veth up lock ! crash pause
a point-to-point uplink, tunnel killed      | 0   | tun up lock ! crash pause
only a point-to-point uplink                | 0   | tun only up lock ! crash pause
a card without a link kind                  | 0   | tap only up lock ! crash pause
a card without a link kind, kill switch     | 0   | tap only up ! crash lock pause
a card that comes while locked              | 0   | up lock crash ! veth pause
only IPv6, locked                           | 0   | up lock crash ! no4 pause
openvpn killed, kill switch                 | 0   | up ! crash lock pause
openvpn ends, kill switch                   | 0   | up ! term lock pause
server vanished, kill switch                | 0   | up ! vanish lock pause
server vanished, locked, connecting again   | 0   | up lock ! vanish appear up lock pause
killed and connecting again, locked         | 0   | up lock ! crash up lock pause
reconnect button, locked                    | 0   | up lock ! down up lock pause
name servers rewritten, locked              | 0   | up lock ! rewrite pause
table of the marked packets emptied, locked | 0   | up lock ! empty crash up pause
another network, locked, connecting again   | 0   | up lock ! roam crash up lock pause
card down and up, locked, connecting again  | 0   | up lock ! flap crash up lock pause
senders checked, locked, connecting again   | 0   | strict up lock ! crash up pause
senders checked loosely, connecting again   | 0   | loose up lock ! crash up pause
senders checked, over TCP                   | 0   | strict tcp up lock ! crash up pause
senders checked, guest knocks, locked       | 0   | strict guest up lock ! knock
forwarded packets, locked                   | 0   | guest up lock ! crash pause
forwarded packets, open                     | 0   | guest up ! pause
guardian killed, locked                     | 0   | up lock ! killguardian crash pause
program and guardian killed, locked         | 0   | up lock ! killboth pause
somebody else unlocks                       | 0   | up lock ! otherunlocks pause
not connected                               | some | ! pause
connecting for the first time               | some | ! hang pause
OpenVPN restarts by itself, locked          | 0   | up lock ! restart pause
OpenVPN restarts by itself, open            | 0   | up ! restart pause
locked while connected                      | 0   | up pause lock ! pause
unlocked while connected                    | 0   | up lock unlock ! pause
openvpn killed, locked                      | 0   | up lock ! crash pause
openvpn killed, no word for twelve seconds  | 0   | up ! crash pause12
kill switch confirmed                       | some | up crash lock unlock ! pause
connecting again in vain, locked            | 0   | up lock crash ! hang pause
connecting again in vain, open              | some | up crash ! hang pause
guardian killed, open                       | 0   | up ! killguardian crash pause
program killed, locked                      | some | up lock ! killprogram pause pause pause
program killed, open                        | some | up ! killprogram pause pause pause
program killed, kill switch                 | some | up crash lock ! killprogram pause pause pause
program and guardian killed, open           | 0   | up ! killboth pause
packet filter emptied, locked               | 0   | up lock flush crash ! pause
packet filter emptied, open                 | 0   | up flush ! crash pause
disconnected, locked                        | some | up lock down unlock ! pause
disconnected, open                          | some | up down ! pause
user quits, locked                          | some | up lock down unlock killprogram ! pause
user quits, open                            | some | up down killprogram ! pause
the window quits, locked                    | some | window ! quit pause pause
the window quits, open                      | some | openwindow ! quit pause pause
the window killed, locked                   | some | window ! killprogram pause pause pause
the window connects again, locked           | 0   | window ! crash again pause
the kill switch of the window               | 0   | openwindow ! crash pause pause
the window killed at its kill switch        | some | openwindow crash pause ! killprogram pause pause pause
proxied server                              | some | proxied up ! pause
L2TP, locked                                | 0   | dial lock ! pause
L2TP, locked, its link goes                 | 0   | dial lock ! hangup pause
'

if [ -z "${LAB_DIR:-}" ]; then # the table
    status=0
    printf '%-45s %8s %8s %8s\n' row tries control past
    while IFS='|' read -r name allowed steps; do
        read -r name <<<"$name"
        [ -n "$name" ] || continue
        [ $# -eq 0 ] || [[ " $* " == *" $name "* ]] || continue
        for _ in 1 2; do # on a busy machine a lab may not come up
            plain=$(plain=1 "$root/lab/lab" run --nat --build "$build" -- bash "$here" --build "$build" "$steps" 2>&1)
            counts=$("$root/lab/lab" run --nat --build "$build" -- bash "$here" --build "$build" "$steps" 2>&1)
            read -r _ control <<<"$(tail -n1 <<<"$plain")"
            read -r tries past <<<"$(tail -n1 <<<"$counts")"
            [[ ! $past =~ ^[0-9]+$ || ! $control =~ ^[1-9][0-9]*$ ]] || break
        done
        printf '%-45s %8s %8s %8s' "$name" "$tries" "$control" "$past"
        allowed=${allowed// /}
        if [[ ! $past =~ ^[0-9]+$ || ! $control =~ ^[1-9][0-9]*$ ]]; then
            printf '   NOT TRIED: %s' "$(tail -n3 <<<"$plain $counts" | tr '\n' ' ')"
            status=1
        elif [ "$allowed" = 0 ] && [ "$past" -gt 0 ]; then
            printf '   LEAK'
            status=1
        elif [ "$allowed" = some ] && [ "$past" -eq 0 ]; then
            printf '   CUT OFF'
            status=1
        elif [ "$allowed" != 0 ]; then
            printf '   may pass'
        fi
        echo
    done <<<"$rows"
    exit $status
fi

# From here on inside a lab, on the subscriber's machine.
app=/run/app
server=Examplia-1
gateway=$LAB_HOME.1
mkdir -p "$app/cfg"
cp -a "$build"/Korvan.app/Contents/MacOS/{compose,compose4,network,up.sh,down.sh,tools} "$app"
cp -a "$LAB_PROFILES" "$app/cfg/OpenVPN"
cp "$(command -v bash)" "$app/Korvan"

# The program, as far as the helpers know it: a process of the bundle that starts OpenVPN and changes routes with the
# fixed calls. It obeys lines of a pipe and answers each when it is done. Where it is to be plain OpenVPN it is that alone.
cat >"$app/program" <<'END'
while read -r order; do
    case $order in
    open)
        : >"$app/log"
        opener=$app/compose
        korvan=(--management 127.0.0.1 44358 --script-security 2 --up "$app/up.sh" --down "$app/down.sh")
        [ -z "$plain" ] || opener=/usr/sbin/openvpn korvan=()
        "$opener" --config "$app/cfg/OpenVPN/$server.ovpn" \
            --cd "$app/cfg/OpenVPN/" "${korvan[@]}" >"$app/log" 2>&1 &
        pid=$!
        disown
        echo $pid >"$app/pid"
        for ((n = 0; n < 1500; n++)); do
            grep -q "Initialization Sequence Completed" "$app/log" && break
            kill -0 $pid 2>/dev/null || break
            read -rt 0.01 <> <(:)
        done
        ;;
    delete | add) [ -n "$plain" ] || "$app/tools/route" $order 0.0.0.0 mask 0.0.0.0 "$gateway" >>"$app/said" ;;
    close)
        [ -n "$plain" ] || bash "$app/down.sh" &
        kill -KILL "$(<"$app/pid")"
        wait
        ;;
    esac
    echo done >&3
done <"$app/orders" 3>"$app/answers"
END
mkfifo "$app/orders" "$app/answers"

start_program() {
    if [ -z "${running:-}" ]; then
        export app server gateway plain=${plain:-}
        "$app/Korvan" "$app/program" &
        running=$!
        disown
        exec 4>"$app/orders" 5<"$app/answers"
    fi
}
program() {
    start_program
    echo "$1" >&4
    read -rt 20 _ <&5 || echo "no answer to $1" >&2
}
gone() { while kill -0 "$1"; do read -rt 0.01 <> <(:); done 2>/dev/null; }

# What may happen.
up() {
    program open
    grep -q "Initialization Sequence Completed" "$app/log" || { tail -n2 "$app/log"; echo "no tunnel"; exit 1; }
}
lock() { program delete; }
unlock() { program add; }
down() { program close; }
crash() { kill -KILL "$(<"$app/pid")"; gone "$(<"$app/pid")"; pause; }
term() { kill -TERM "$(<"$app/pid")"; gone "$(<"$app/pid")"; }
vanish() { "$LAB" ctl vanish Examplia-1; gone "$(<"$app/pid")"; }
appear() { "$LAB" ctl appear Examplia-1; }
# The real window, which connects by itself, with lock-down and reconnection or without.
window() { openwindow lock-down reconnect; }
openwindow() {
    [ -z "${plain:-}" ] || { up; return; }
    cp -a "$build/Korvan.app" /run/window
    local bundle=/run/window/Contents/MacOS
    cp "$build/demo/prepare_state" "$bundle"
    "$bundle/prepare_state" alice wonderland-7 Examplia-1 "$@"
    QT_QPA_PLATFORM=offscreen "$bundle/Korvan" >"$app/log" 2>&1 &
    running=$!
    disown
    again
    [ $# -eq 0 ] || await_no default
}
# A tunnel comes up, by the window or, where there is none, by order.
again() {
    [ -z "${plain:-}" ] || { up; return; }
    local old n
    old=$(cat "$app/pid" 2>/dev/null)
    for ((n = 0; n < 3000; n++)); do
        pid=$(pgrep -P "$running" -x openvpn) && [ "$pid" != "$old" ] && ip route | grep -q '^0.0.0.0/1 ' && break
        read -rt 0.01 <> <(:)
    done
    echo "$pid" >"$app/pid"
    [ $n -lt 3000 ] || { tail -n2 "$app/log"; echo "no tunnel"; exit 1; }
}
await_no() { while ip route | grep -q "^$1 "; do read -rt 0.01 <> <(:); done; }
quit() {
    if [ -n "${plain:-}" ]; then term; else kill -TERM "$running"; gone "$running"; fi
}
# An attempt that comes to no end.
hang() {
    "$LAB" ctl vanish Examplia-1
    start_program
    echo open >&4
}
restart() { kill -USR1 "$(<"$app/pid")"; pause; }
# A system VPN service, whose link the network manager makes.
dial() {
    export LAB_UPLINKS=home
    if [ -z "${plain:-}" ]; then
        printf '#!/bin/sh\n' >/run/nmcli
        chmod +x /run/nmcli
        mount --bind /run/nmcli /usr/bin/nmcli
        "$app/compose4" L2TP Korvan-L2TP 203.0.113.21 key
    fi
    "$LAB" ctl uplink tun 50
}
hangup() { ip link set ppp0 down; }
flush() { nft flush ruleset; pause; }
pause12() { read -rt 12 <> <(:); }
pause() { read -rt 1 <> <(:); }
route() { "$LAB" ctl route 203.0.113.10/32; "$LAB" ctl route 2001:db8:113::10/128; pause; }
host() { "$LAB" ctl host 203.0.113.10; "$LAB" ctl host 2001:db8:113::10; pause; }
subnet24() { "$LAB" ctl subnet 203.0.113.200/24; pause; }
subnet2() { "$LAB" ctl subnet 203.0.113.200/2; pause; }
push() { "$LAB" ctl push Examplia-1 "route 203.0.113.10 255.255.255.255 net_gateway"; }
veth() { "$LAB" ctl uplink veth; }
tun() { "$LAB" ctl uplink tun; }
tap() { "$LAB" ctl uplink tap; }
loose() { echo 2 | tee /proc/sys/net/ipv4/conf/{all,eth0}/rp_filter >/dev/null; }
strict() { echo 1 | tee /proc/sys/net/ipv4/conf/{all,eth0}/rp_filter >/dev/null; }
tcp() { server=Examplia-1-TCP; }
only() { ip link set eth0 down; gateway=; }
no4() { ip -4 route flush default; pause; }
rewrite() { echo "nameserver $LAB_HOME.1" >/etc/resolv.conf.new; mv /etc/resolv.conf.new /etc/resolv.conf; pause; }
empty() { ip route flush table 19311; }
# The network manager of a machine that woke up elsewhere.
roam() {
    ip -n world address add 192.168.9.1/24 dev home
    ip address flush dev eth0
    ip route flush table 19311
    ip address add 192.168.9.2/24 dev eth0
    ip -6 address add 2001:db8:51::2/64 dev eth0 nodad
    ip route add default via 192.168.9.1 proto dhcp metric 100
    ip -6 route add default via 2001:db8:51::1
    ip netns exec world nft 'add rule ip nat on ip saddr 192.168.9.0/24 oifname "vpn*" snat to 198.51.100.2' 2>/dev/null
}
flap() { ip link set eth0 down; ip link set eth0 up; ip route replace default via "$LAB_HOME.1"; pause; }
guest() {
    echo 1 >/proc/sys/net/ipv4/ip_forward
    ip netns add guest
    ip link add guest0 type veth peer name eth0 netns guest
    ip address add 10.9.9.1/24 dev guest0
    ip link set guest0 up
    ip -n guest address add 10.9.9.2/24 dev eth0
    ip -n guest link set eth0 up
    ip -n guest route add default via 10.9.9.1
    nft 'table ip guest { chain out { type nat hook postrouting priority 100; ip saddr 10.9.9.0/24 masquerade; }; }'
    sender="ip netns exec guest"
}
# A socket that takes packets for any address could be found for those that are only forwarded.
knock() {
    local port
    port=$(ss -Hunap | sed -n 's/.*:\([0-9]*\) .*"openvpn".*/\1/p')
    port=$port ip netns exec guest bash -c 'for n in {1..100}; do echo x >"/dev/udp/203.0.113.10/$port"; read -rt .01 <> <(:); done'
}
killguardian() { kill -KILL $(pgrep -x network); }
killprogram() { kill -KILL "$running"; running=; }
killboth() { kill -KILL $(pgrep -x network) "$running" "$(<"$app/pid")"; running=; }
otherunlocks() { "$app/tools/route" add 0.0.0.0 mask 0.0.0.0 "$gateway" >/dev/null; }
proxied() { server=Proxied-Samplonia; }

# Sends to everybody without a pause but 2 ms, and counts in a file.
send() {
    local n=0 to
    while :; do
        for to in 203.0.113.10/9 203.0.113.30/9 2001:db8:113::10/9 "$LAB_HOME.1/53"; do
            echo x >"/dev/udp/$to" || true
            echo $((++n)) >/run/tries
        done
        read -rt .002 <> <(:)
    done 2>/dev/null
}
export -f send
sending() { ${sender:-} setpriv --pdeathsig KILL bash -c send & sender_pid=$!; read -rt 0.3 <> <(:); }

read -r -a steps <<<"${1%%!*}"
read -r -a counted <<<"${1#*!}"
for step in "${steps[@]}"; do
    # What belongs to the machine is there before anybody sends.
    case $step in push | veth | tun | tap | only | strict | loose | tcp | guest | proxied) ;; *) [ -n "${sender_pid:-}" ] || sending ;; esac
    $step
done
[ -n "${sender_pid:-}" ] || sending
"$LAB" ctl watch
for step in "${counted[@]}"; do $step; done
past=$("$LAB" ctl leaked)
kill "$sender_pid"
echo "$(</run/tries) $past"
