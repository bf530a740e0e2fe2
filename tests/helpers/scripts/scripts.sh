# shellcheck shell=bash
# The scripts that OpenVPN runs when a tunnel comes and goes, with an /etc of their own and stand-ins for OpenVPN, which
# run up.sh in OpenVPN's environment and stay.
export PATH=/usr/sbin:/usr/bin:/sbin:/bin
cp -a /etc /run/etc; mount --bind /run/etc /etc
mkdir -m 700 /run/korvan; touch /run/korvan/network-lock
uplink e1 1
ip route add default via 198.51.1.1 dev e1
# tunnel [NAME=VALUE...]: starts one; $pid is its process
tunnel() {
    rm -f /run/status
    env -i dev=tun0 trusted_ip=203.0.113.9 route_net_gateway=198.51.1.1 route_vpn_gateway=198.18.0.1 foreign_option_1='dhcp-option DNS 198.18.0.1' \
        foreign_option_2='dhcp-option DOMAIN corp.example' "$@" /bin/bash -c 'export daemon_pid=$$; umask 077
        "$0"/up.sh tun0 1500 0 198.18.0.2 255.255.255.0 init
        echo $? >/run/status; exec sleep 50' "$bundle" 2>/run/errors &
    pid=$!
    disown
    until [[ -s /run/status ]]; do sleep 0.01; done
}
# down: down.sh as the program runs it
down() { env -i /bin/bash "$bundle/down.sh"; }
# state: all that up.sh may have changed
state() {
    stat -c '%N %i %a %U' /etc/resolv.conf; cat /etc/resolv.conf
    ls /etc | grep resolv; ip route; ip rule; ip route show table all | grep 19311; nft list tables; ls /run/korvan
} 2>&1
# restores LINES [FILE]: a tunnel sets these lines; it is ended once by OpenVPN, which still lives when it runs down.sh
# and leaves all to the program, and once by the program, which has killed OpenVPN
restores() {
    state >/run/before
    tunnel
    is "$1" cat /etc/resolv.conf $2
    is 644 stat -Lc %a /etc/resolv.conf
    env -i daemon_pid=$pid dev=tun0 script_type=down "$bundle/down.sh" tun0 1500 0 198.18.0.2 255.255.255.0 init
    is no answers 203.0.113.9
    kill $pid; down
    is '' diff /run/before <(state)
    tunnel
    ip route add 203.0.113.9 via 198.51.1.1
    kill -9 $pid
    for n in 1 2; do down; is '' diff /run/before <(state); done
}
lines=$'search corp.example\nnameserver 198.18.0.1'
renamed=$'# Korvan\'s tunnel; the file before: /etc/resolv.conf.korvan\n'$lines

case_name_servers_in_the_file_whatever_it_is() {
    rm -f /etc/resolv.conf
    restores "$renamed"
    ln -s /run/nowhere /etc/resolv.conf
    restores "$renamed"
    rm /etc/resolv.conf; (umask 027; echo nameserver 192.0.2.53 >/etc/resolv.conf)
    restores "$renamed"
    cp /etc/resolv.conf /run; mount --bind /run/resolv.conf /etc/resolv.conf
    restores "$renamed"
    # What somebody else wrote meanwhile stays.
    umount /etc/resolv.conf; tunnel
    echo 'nameserver 192.0.2.99' >/run/new; mv /run/new /etc/resolv.conf
    kill $pid; down
    is $'nameserver 192.0.2.99\n/etc/resolv.conf' cat /etc/resolv.conf <(ls /etc/resolv.conf*)
    # So does what was there when a tunnel starts anew and brings none any more.
    tunnel
    env -i dev=tun0 daemon_pid=$pid trusted_ip=203.0.113.9 route_vpn_gateway=198.18.0.1 "$bundle/up.sh" tun0
    is $'nameserver 192.0.2.99\n/etc/resolv.conf' cat /etc/resolv.conf <(ls /etc/resolv.conf*)
    kill $pid; down
}

case_name_servers_through_resolvconf_and_resolved() {
    # Programs in /usr/bin that note their arguments and their input.
    mkdir /run/upper /run/work
    mount -t overlay overlay -o lowerdir=/usr/bin,upperdir=/run/upper,workdir=/run/work /usr/bin
    printf '#!/bin/bash\n{ echo "${0##*/} $*"; [[ $1 != -a ]] || cat; } >>/run/calls\n' >/usr/bin/resolvconf
    chmod 755 /usr/bin/resolvconf
    restores $'nameserver 192.0.2.53\nresolvconf -a tun0.openvpn\n'"$lines" /run/calls
    cp /usr/bin/resolvconf /usr/bin/resolvectl; rm /run/calls
    mkdir -p /run/systemd/resolve; echo nameserver 192.0.2.53 >/run/systemd/resolve/stub
    ln -sf /run/systemd/resolve/stub /etc/resolv.conf
    restores $'nameserver 192.0.2.53\nresolvectl dns tun0 198.18.0.1\nresolvectl domain tun0 corp.example ~.' \
        /run/calls
    # Where the file is another's nobody asks systemd-resolved, whose package has a resolvconf of its own.
    ln -sf resolvectl /usr/bin/resolvconf
    rm /etc/resolv.conf; echo nameserver 192.0.2.53 >/etc/resolv.conf
    restores "$renamed"
}

case_what_the_server_sent_is_checked() {
    while IFS='|' read -r option expected; do
        tunnel foreign_option_1="dhcp-option $option" foreign_option_2='dhcp-option DNS 198.18.0.2'
        is "$expected${expected:+$'\n'}nameserver 198.18.0.2" grep -v '#' /etc/resolv.conf
        kill $pid; down
    done <<'END'
DNS6 fd00::53|nameserver fd00::53
DOMAIN-SEARCH b.example|search b.example
DNS 198.18.0.1;reboot|
DNS $(touch${IFS}/run/ran)|
DOMAIN *|
END
    ls /run | grep ran
}

case_ipv6_is_blocked_while_the_tunnel_carries_none() {
    ip -6 route add default via fd51:1::1 dev e1
    tunnel; is no answers 2001:db8::9; is yes answers 2001:db8::9 -m 19311; kill $pid; down; is yes answers 2001:db8::9
}

case_a_tunnel_that_can_not_be_guarded_ends() {
    mount --bind /dev/null /usr/sbin/nft
    tunnel
    is $'up.sh: nft is missing; it is in the package nftables\n1' tail -qn1 /run/errors /run/status
    is 'nameserver 192.0.2.53' cat /etc/resolv.conf
}

case_the_first_boot_after_a_power_cut() {
    rm -f /etc/resolv.conf; echo 'nameserver 192.0.2.53' >/etc/resolv.conf
    tunnel; kill -9 $pid
    # What the kernel and /run held is gone; the package's unit runs this.
    nft flush ruleset; ip rule flush table 19311; ip route flush table 19311; rm -r /run/korvan
    is $'# Korvan\'s tunnel; the file before: /etc/resolv.conf.korvan\n'"$lines" cat /etc/resolv.conf
    unit=$(realpath "${BASH_SOURCE[0]%/*}/../../../packaging")/korvan-network.service
    # shellcheck disable=SC2046 # a name and its option
    env -i "$bundle"/$(sed -n "s,^ExecStart=.*/MacOS/,,p" "$unit")
    is "nameserver 192.0.2.53" cat /etc/resolv.conf
    is "" find /etc -name "resolv.conf.korvan"
}

case_down_sh_comes_late_when_a_second_tunnel_to_the_same_server_is_up() {
    state >/run/before
    tunnel; kill -9 $pid
    while kill -0 $pid; do sleep 0.01; done 2>/dev/null
    ip route add 203.0.113.9 via 198.51.1.1
    tunnel foreign_option_1='dhcp-option DNS 198.18.0.2'
    is '' ip route add 203.0.113.9 via 198.51.1.1
    down
    is $'nameserver 198.18.0.2\n203.0.113.9 via 198.51.1.1 dev e1\ntable inet korvan' \
        eval 'grep nameserver /etc/resolv.conf; ip route show 203.0.113.9; nft list tables'
    kill -9 $pid; down
    is '' diff /run/before <(state)
}

case_the_address_of_the_server_is_noted() {
    record=/run/korvan/last-remote
    echo 203.0.113.9 known.example >>/etc/hosts
    attempt() {
        echo 'vpn.example 203.0.113.2' >$record
        tunnel "$@"; kill $pid
        grep -v 203.0.113.2 $record
    }
    is 'vpn.example 203.0.113.9' attempt remote_1=vpn.example remote_2=vpn.example
    is 'known.example 203.0.113.9' attempt remote_1=vpn.example remote_2=known.example
    is '' attempt remote_1=vpn.example http_proxy_server_1=proxy.example
    is '' attempt 'remote_1=vpn.example;reboot'
}
