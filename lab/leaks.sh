# shellcheck shell=bash
# What leaves the subscriber's machine outside any tunnel, seen from the world. Sourced by "lab ctl".

# Counts from 0 all packets that come over the uplinks (those that LAB_UPLINKS matches, else all), before any NAT: name
# queries to anybody, and what else is for neither the local network nor an OpenVPN server.
watch_leaks() {
    ip netns exec world nft -f - <<-END
	table inet leaks; delete table inet leaks
	table inet leaks {
	    counter names {}
	    counter ipv4 {}
	    counter ipv6 {}
	    chain arrived {
	        type filter hook prerouting priority -300
	        iifname != "${LAB_UPLINKS:-home*}" return
	        meta l4proto { tcp, udp } th dport { 53, 853 } counter name names return
	        ip daddr { 10.0.0.0/8, 100.64.0.0/10, 169.254.0.0/16, 172.16.0.0/12, 192.168.0.0/16, 198.51.100.0-198.51.103.255,
	                   224.0.0.0-255.255.255.255 } return
	        ip daddr 203.0.113.21-203.0.113.24 meta l4proto { tcp, udp } th dport { 443, 1194, 1195 } return
	        ip daddr 203.0.113.21-203.0.113.24 icmp type destination-unreachable return # to one whose client was killed
	        ip6 daddr { fc00::/7, fe80::/10, ff00::/8, 2001:db8:51::/64, 2001:db8:60::/44 } return
	        meta nfproto ipv4 counter name ipv4
	        meta nfproto ipv6 counter name ipv6
	    }
	}
	END
}

# How many have come since; of one kind (names, ipv4, ipv6) or of all.
show_leaks() {
    ip netns exec world nft list counters table inet leaks |
        awk -v kind="${1:-}" '$1 == "counter" { on = kind == "" || $2 == kind } $1 == "packets" && on { n += $2 } END { print n + 0 }'
}

# Sends to hosts of the world (the web's and the proxies' unless named) until it is killed, one packet each in 2 ms.
send_flood() {
    local host
    [ $# -gt 0 ] || set -- 203.0.113.10 203.0.113.30 2001:db8:113::10
    while :; do
        for host; do echo x >"/dev/udp/$host/9" || true; done # fails where there is no way
        read -r -t .002 <> <(:) || true
    done 2>/dev/null
}
