# shellcheck shell=bash
# The machines of the lab and the links between them. Sourced by the first process of a lab.

# home $LAB_HOME.2 --- $LAB_HOME.1 world 203.0.113.10, .30 --- vpnN 203.0.113.2N
make_network() {
    local n
    # The namespace of the first process is the router.
    ip netns attach world $$
    ip netns add home
    forward
    ip link set lo up
    ip address add 203.0.113.10/32 dev lo
    ip address add 203.0.113.30/32 dev lo
    ip address add 2001:db8:113::10/128 dev lo nodad

    ip link add home type veth peer name eth0 netns home
    ip address add "$LAB_HOME.1/24" dev home
    [ "$LAB_HOME" = 198.51.100 ] || translate
    ip address add 2001:db8:51::1/64 dev home nodad
    ip link set home up
    ip -n home -batch - <<-END
	link set lo up
	address add $LAB_HOME.2/24 dev eth0
	address add 2001:db8:51::2/64 dev eth0 nodad
	link set eth0 up
	route add default via $LAB_HOME.1
	route add default via 2001:db8:51::1
	END
    for n in 1 2 3 4; do
        make_machine "$n"
    done
}

# The world sees home as 198.51.100.2, where that is not its own address.
translate() {
    ip address add 198.51.100.1/24 dev home
    nft -f - <<-END
	table ip nat {
	    chain on { type nat hook postrouting priority 100; ip saddr $LAB_HOME.0/24 oifname "vpn*" snat to 198.51.100.2; }
	    chain here { type nat hook input priority 100; ip saddr $LAB_HOME.0/24 ip daddr 203.0.113.0/24 snat to 198.51.100.2; }
	}
	END
}

# The machine of a VPN server. What leaves a tunnel keeps its tunnel address, so that the web server sees by it which
# way a request came.
make_machine() {
    local name=vpn$1 address=203.0.113.2$1 rate
    rate=$((160 >> $1))mbit
    ip netns add "$name"
    ip netns exec "$name" bash -c "$(declare -f forward); forward"
    ip link add "$name" type veth peer name eth0 netns "$name"
    ip link set "$name" up
    ip -n "$name" -batch - <<-END
	link set lo up
	address add $address/32 dev eth0
	link set eth0 up
	route add default via 203.0.113.10 dev eth0 onlink
	END
    ip -batch - <<-END
	route add $address dev $name
	route add 198.18.$1.0/24 via $address dev $name onlink
	route add 198.18.1$1.0/24 via $address dev $name onlink
	route add 198.18.2$1.0/24 via $address dev $name onlink
	END
    tc qdisc add dev "$name" root tbf rate "$rate" burst 128kb latency 100ms
    tc -n "$name" qdisc add dev eth0 root tbf rate "$rate" burst 128kb latency 100ms
}

forward() {
    echo 1 >/proc/sys/net/ipv4/ip_forward
    [ ! -d /proc/sys/net/ipv6 ] || echo 1 >/proc/sys/net/ipv6/conf/all/forwarding
}
