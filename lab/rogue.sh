# shellcheck shell=bash
# What whoever owns the subscriber's network may do to it, and further networks. Sourced by "lab ctl". An address with a
# colon is IPv6.

family() { case $1 in *:*) echo -6 ;; *) echo -4 ;; esac; }

# What a DHCP client does with a route that option 121 brings, or with one of a router's advertisement.
push_route() {
    local gateway=$LAB_HOME.1
    [ "$(family "$1")" = -4 ] || gateway=2001:db8:51::1
    ip -n home "$(family "$1")" route replace "$1" via "$gateway" dev eth0 proto dhcp
}

# A route to a host as if it were in the local network, where the router answers for it.
claim_host() {
    answer_for "$1"
    ip -n home "$(family "$1")" route replace "$1" dev eth0
}

# The lease gives home the address ADDRESS/LENGTH, and so claims all addresses around it for the local network.
claim_subnet() {
    answer_for 203.0.113.10
    answer_for 2001:db8:113::10
    # shellcheck disable=SC2046
    ip -n home "$(family "$1")" address replace "$1" dev eth0 $([ "$(family "$1")" = -4 ] || echo nodad)
}

# From now on the router answers when the local network asks who has this address; for IPv4, any address.
answer_for() {
    if [ "$(family "$1")" = -6 ]; then
        ip netns exec world bash -c 'cd /proc/sys/net/ipv6; echo 1 >conf/home/proxy_ndp; echo 0 >neigh/home/proxy_delay'
        ip -n world -6 neigh replace proxy "$1" dev home
        return
    fi
    # It answers only for what it would send on elsewhere, be it into the void.
    ip -n world link show sink >/dev/null 2>&1 || ip -n world link add sink type ifb
    ip -n world link set sink up
    ip -n world route replace default dev sink
    ip netns exec world bash -c 'echo 1 >/proc/sys/net/ipv4/conf/home/proxy_arp'
}

# A further uplink into the world, with default routes of this metric: "veth" is eth1; "tap" is eth2, a card that nobody
# can tell from a tunnel by its link kind; "tun" is ppp0, a point-to-point device.
add_uplink() {
    local kind=$1 metric=${2:-700} number device
    case $kind in
        veth) number=1 device=eth1 ;;
        tap) number=2 device=eth2 ;;
        tun) number=3 device=ppp0 ;;
        *) usage ;;
    esac
    local there=198.51.10$number.1 here=198.51.10$number.2 log=$LAB_DIR/$device.log
    if [ "$kind" = veth ]; then
        ip -n world link add home1 type veth peer name eth1 netns home
    else
        "$LAB_BUILD/lab/lab_service" wire "$kind" home "$device" world "home$number" >"$log" 2>&1 &
        await "$device" "$log" grep -q ready "$log"
    fi
    address_uplink world "home$number" "$kind" "$there" "$here" "2001:db8:6$number::1"
    address_uplink home "$device" "$kind" "$here" "$there" "2001:db8:6$number::2"
    if [ "$kind" = tun ]; then
        ip -n home route add default dev "$device" metric "$metric"
        ip -n home route add ::/0 dev "$device" metric "$metric"
    else
        ip -n home route add default via "$there" metric "$metric"
        ip -n home route add ::/0 via "2001:db8:6$number::1" metric "$metric"
    fi
}

address_uplink() {
    local space=$1 device=$2 kind=$3 own=$4 peer=$5 own6=$6
    [ "$kind" = tun ] && own="$own peer $peer" || own=$own/24
    # shellcheck disable=SC2086
    ip -n "$space" address add $own dev "$device"
    ip -n "$space" address add "$own6/64" dev "$device" nodad
    ip -n "$space" link set "$device" up
}

# Name servers on the subscriber's router and at the far end of every tunnel. names.korvan.example, which no hosts file
# knows, is 203.0.113.10 to the router's and 198.18.N.1 to that of tunnel N.
start_names() {
    local n
    start_name_server world "$LAB_HOME.1" 203.0.113.10
    for n in 1 2 3 4; do
        start_name_server "vpn$n" "198.18.$n.1,198.18.1$n.1" "198.18.$n.1"
    done
}
start_name_server() {
    local log=$LAB_DIR/names-$1.log
    ip netns exec "$1" dnsmasq --keep-in-foreground --conf-file=/dev/null --user=root --pid-file= --no-resolv --no-hosts \
        --addn-hosts="$LAB_DIR/etc/hosts" --address="/names.korvan.example/$3" --listen-address="$2" --bind-interfaces \
        --log-queries --log-facility="$log" &
    await "the name server of $1" "$log" grep -q started "$log"
}
