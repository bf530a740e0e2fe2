#!/usr/bin/env bash
# l2tp-server.sh: an L2TP/IPsec server in a namespace of the guest, 10.51.0.1 to it, from real parts: strongSwan with the
# pre-shared key, xl2tpd, and pppd, which asks for MS-CHAPv2. alice's password is wonderland-7. Runs in the guest as root;
# behind the server 10.51.9.1 answers whoever came through. "l2tp-server.sh stop" and "start" end it and start it again.
set -euo pipefail
folder=/etc/l2tp-server

make_network() {
    ip netns add l2tp
    ip link add ethl2tp type veth peer name eth0 netns l2tp
    ip -n l2tp -batch - <<-END
	link set lo up
	address add 10.51.0.1/24 dev eth0
	address add 10.51.9.1/32 dev lo
	link set eth0 up
	END
    # NetworkManager reaches the server over the network that is its first.
    nmcli connection add type ethernet ifname ethl2tp con-name l2tp ipv4.method manual ipv4.addresses 10.51.0.2/24 \
        ipv4.gateway 10.51.0.1 ipv4.route-metric 60 ipv6.method disabled
    for _ in {1..50}; do # it takes a new card a moment to be one of NetworkManager's
        nmcli connection up l2tp && return
        sleep 0.2
    done
    return 1
}

configure() {
    mkdir -p "$folder"
    cat >"$folder/ipsec.conf" <<-END
	conn lab
	    keyexchange=ikev1
	    authby=secret
	    type=transport
	    left=10.51.0.1
	    leftprotoport=17/1701
	    right=%any
	    rightprotoport=17/%any
	    auto=add
	END
    echo "10.51.0.1 %any : PSK \"$1\"" >"$folder/ipsec.secrets"
    cat >"$folder/xl2tpd.conf" <<-END
	[lns default]
	ip range = 10.51.1.10-10.51.1.20
	local ip = 10.51.1.1
	name = lab
	require authentication = yes
	length bit = yes
	pppoptfile = $folder/options
	END
    printf '%s\n' require-mschap-v2 'name lab' 'ms-dns 10.51.9.1' 'mtu 1400' noccp 'lcp-echo-interval 5' \
        'lcp-echo-failure 3' >"$folder/options"
    echo 'alice lab wonderland-7 *' >"$folder/chap-secrets"
}

# The daemons find their files in /etc and /run, where the guest's own client keeps its own.
start() {
    # shellcheck disable=SC2016
    setsid ip netns exec l2tp unshare --mount bash -c '
        mount --make-rprivate /
        mount -t tmpfs run /run
        mkdir /run/xl2tpd
        touch /etc/ipsec.secrets /etc/ppp/chap-secrets
        for file in ipsec.conf ipsec.secrets; do mount --bind "$1/$file" "/etc/$file"; done
        mount --bind "$1/chap-secrets" /etc/ppp/chap-secrets
        ipsec start
        exec xl2tpd -D -c "$1/xl2tpd.conf"' bash "$folder" >/var/log/l2tp-server.log 2>&1 &
}

case ${1:-make} in
    make) make_network; configure "$2"; start ;;
    start) start ;;
    stop) ip netns pids l2tp | xargs -r kill -KILL ;;
esac
