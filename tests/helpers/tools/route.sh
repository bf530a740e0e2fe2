# shellcheck shell=bash
# The tools route and netstat against real routing tables, with two uplinks and short names for what is asked often.
tools=$bundle/tools; PATH=$tools:$PATH
uplink e1 1
uplink e2 2
lockdown() { $killer route delete 0.0.0.0 mask 0.0.0.0 "$@"; }
release() { $killer route add 0.0.0.0 mask 0.0.0.0 "$@"; }
leftovers() { ip rule | grep 19311; ip route show table 19311; nft list tables; ls /run/korvan | grep -v lock; } 2>/dev/null

case_delete_then_add_restores_the_table_to_the_byte() {
    # restores ROUTES
    restores() {
        eval "$1"
        ip route >/run/before
        is 'OK!' lockdown 198.51.1.1
        is '' eval 'ip route show default | grep -v nhid' # what the kernel's next hop objects hold stays
        is $'700 root\n600 root' stat -c '%a %U' /run/korvan /run/korvan/network.journal
        is 'OK!' release 198.51.1.1
        is '' diff /run/before <(ip route)
        is '' leftovers
        while ip route del default; do :; done 2>/run/done
    }
    plain='ip route add default via 198.51.1.1 dev e1 proto dhcp src 198.51.1.2 metric 100'
    restores "$plain"
    restores "$plain; ip route add default via 198.51.2.1 dev e2 metric 600 onlink mtu lock 1400 initcwnd 20"
    restores 'ip route add default nexthop via 198.51.1.1 weight 2 nexthop via 198.51.2.1 weight 1'
    restores 'ip nexthop add id 5 via 198.51.1.1 dev e1; ip route add default nhid 5 metric 9'
    restores 'ip route add default dev e1 scope link metric 3'
    # Two of equal metric, and an uplink that is point-to-point.
    restores "$plain; ip route append default via 198.51.2.1 dev e2 proto dhcp metric 100"
    restores "$plain; ip tuntap add t1 mode tun; ip link set t1 up; ip route add default dev t1 metric 5000"
    restores "$plain; ip route add 203.0.113.9 via 198.51.1.1 metric 100"
}

case_only_marked_packets_find_a_way_ipv6_too() {
    ip route add default via 198.51.1.1 dev e1
    ip -6 route add default via fd51:1::1 dev e1
    is yes answers 2001:db8::9
    is 'OK!' lockdown 198.51.1.1
    for host in 203.0.113.9 2001:db8::9 198.51.1.1; do is no answers $host; done
    is yes answers fd51:1::1 # the local network
    ip neighbour flush dev e1
    for host in 203.0.113.9 2001:db8::9; do is yes answers $host -m 19311; done
    is 'OK!' release 198.51.1.1
    for check in 1 2; do # the kernel's check of the sender, strict or loose, must not drop answers to a socket
        echo $check >/proc/sys/net/ipv4/conf/e1/rp_filter
        is 'OK!' lockdown 198.51.1.1
        is refused perl -MSocket -e 'socket(S, AF_INET, SOCK_STREAM, 0); setsockopt(S, SOL_SOCKET, 36, 19311); alarm 5;
            connect(S, pack_sockaddr_in(9, inet_aton("203.0.113.9"))) or print $!{ECONNREFUSED} ? "refused" : $!'
        is 'OK!' release 198.51.1.1
    done
    is yes answers 2001:db8::9
    is 0 cat /proc/sys/net/ipv4/conf/all/src_valid_mark
}

case_killed_before_and_after_each_tool_it_runs_and_each_change_of_its_journal() {
    export ASAN_OPTIONS=detect_leaks=0 # impossible when traced
    ip route add default via 198.51.1.1 dev e1 metric 100
    ip route add default via 198.51.2.1 dev e2 metric 600
    before=$(ip route | sed 's/ *$//')
    for request in lockdown release; do
        kills=0
        for call in clone wait4 renameat unlinkat sendmsg; do
            for ((n = 1, status = 1; status != 0; n++, kills++)); do
                [[ $request == lockdown ]] || lockdown 198.51.1.1 >/dev/null
                killer="strace -qo /dev/null -e inject=$call:signal=KILL:when=$n" $request 198.51.1.1 >/dev/null; status=$?
                is 'OK!' release 198.51.1.1
                is "$before" ip route
                is '' leftovers
            done
        done 2>/dev/null
        [[ $kills -gt 12 ]] || echo "$request was killed only $kills times"
    done
}

case_the_routes_come_back_when_the_program_dies() {
    mkdir -p /run/b/tools; cp $tools/route /run/b/tools/; cp $bundle/network /run/b/; cp /bin/bash /run/b/Korvan
    route=/run/b/tools/route
    # guarded INSIDE OUTSIDE LEFT: what a program of that name does while locked down, and what happens before it is killed
    guarded() {
        ip route replace default via 198.51.1.1 dev e1 metric 7
        /run/b/Korvan -c "for n in 1 2; do $route delete 0.0.0.0 mask 0.0.0.0 198.51.1.1; done; $1 touch /run/ready; sleep 60; :" \
            >/run/said &
        until [[ -e /run/ready ]]; do sleep 0.01; done
        eval "$2"; rm /run/ready; disown; kill -KILL $!
        while pidof /run/b/network >/run/guardian; do sleep 0.01; done
        is "$3" ip route show default
    }
    original='default via 198.51.1.1 dev e1 metric 7'
    guarded "$route add 0.0.0.0 mask 0.0.0.0 198.51.1.1;" '' "$original"
    # Meanwhile somebody empties the table of OpenVPN's packets and removes a rule, the session ends, and the program is
    # upgraded.
    guarded '' 'ip route flush table 19311; ip rule del priority 19311
        until ip rule | grep -q ^19311: && ip route show table 19311 | grep -q default; do sleep 0.01; done
        kill -TERM $(pidof /run/b/network); rm /run/b/Korvan; cp /bin/bash /run/b/Korvan' "$original"
    guarded '' 'is no answers 203.0.113.9' "$original"
    is '' leftovers
}

case_the_interface_is_lost() {
    ip route add default via 198.51.1.1 dev e1 metric 100
    is 'OK!' lockdown 198.51.1.1
    ip link del e1
    ip address add 198.51.1.2/24 dev e2
    is 'OK!' release 198.51.1.1
    is 'default via 198.51.1.1 dev e2' ip route show default
    is '' leftovers
}

case_a_journal_that_is_somebody_else_s_is_not_believed() {
    ip route add default via 198.51.1.1 dev e1
    echo 'route default via 198.51.2.1 dev e2' >/run/victim
    for plant in 'ln -s /run/victim /run/korvan/network.journal' 'install -o 4711 /run/victim /run/korvan/network.journal' \
        'rmdir /run/korvan; mkdir -p /run/other; ln -s /run/other /run/korvan' 'chmod 777 /run/korvan'; do
        rm -rf /run/korvan; mkdir -m 700 /run/korvan; eval "$plant"
        is 1 grep -cE '^OK!|^route: /run/korvan.*: (is a link or no folder|Operation not permitted)$' <(lockdown 198.51.1.1)
        is 'OK!' tail -n1 <(release 198.51.1.1)
        is 'default via 198.51.1.1 dev e1' ip route show default
        is 'route default via 198.51.2.1 dev e2' cat /run/victim
    done
}

case_other_requests() {
    is 'route: no deleted route to restore, and "" is no gateway address' release
    is 'OK!' lockdown # without a default route, too: one may come
    is 'OK!' release 198.51.2.1
    is 'OK!' route change 0.0.0.0 mask 0.0.0.0 198.51.1.1
    is '0.0.0.0 0.0.0.0 198.51.1.1 e1 0' echo $(route print 0.0.0.0 mask 0.0.0.0)
    is 'route: "--help" is no gateway address' lockdown --help
    is 'route: only root can change routes' setpriv --reuid 4711 --clear-groups $tools/route delete 0.0.0.0 mask 0.0.0.0
}

case_netstat_without_a_name_server_that_answers() {
    ip route add default dev e1 scope link metric 3
    ip route add default via 198.51.2.1 dev e2 metric 600
    ip route add default via 198.51.1.1 dev e1 metric 100
    timeout 2 netstat -r >/run/table # a query takes five
    is 'default link#101 3 e1 default 198.51.1.1 100 e1 default 198.51.2.1 600 e2' echo $(grep ^default /run/table)
}
