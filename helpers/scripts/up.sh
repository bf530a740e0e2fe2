#!/bin/bash
# Run by OpenVPN when its tunnel is up: sets the name servers that the server pushed, blocks IPv6 while the tunnel
# carries none, and notes what down.sh has to undo. What the server sent is checked before it is used. Exit status 1,
# which ends OpenVPN, only when IPv6 packets would go past the tunnel.
set -u
export PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C
umask 077
folder=/run/korvan
resolv=/etc/resolv.conf
saved=/etc/resolv.conf.korvan
down=${BASH_SOURCE[0]%/*}/down.sh

say() { echo "up.sh: $*" >&2; }
byte='(25[0-5]|2[0-4][0-9]|1?[0-9]?[0-9])'
is_ipv4() { [[ $1 =~ ^($byte\.){3}$byte$ ]]; }
is_ipv6() { [[ $1 == *:* && $1 =~ ^[0-9A-Fa-f:.]{2,45}$ ]]; }
is_name() { [[ ${#1} -le 253 && $1 =~ ^[A-Za-z0-9_][A-Za-z0-9_-]*(\.[A-Za-z0-9_][A-Za-z0-9_-]*)*\.?$ ]]; }

# value NAME N: what OpenVPN put into the environment as NAME_N.
value() {
    local name=$1_$2
    echo "${!name:-}"
}

# The pushed "dhcp-option" lines.
read_pushed_dns() {
    local n option kind what
    for ((n = 1; n <= 100; n++)); do
        read -r option kind what <<<"$(value foreign_option $n)"
        case $option:$kind in
        dhcp-option:DNS | dhcp-option:DNS6)
            if is_ipv4 "$what" || is_ipv6 "$what"; then servers+=("$what"); else say "no address: ${what@Q}"; fi ;;
        dhcp-option:DOMAIN | dhcp-option:DOMAIN-SEARCH)
            if is_name "$what"; then domains+=("$what"); else say "no domain: ${what@Q}"; fi ;;
        :) break ;;
        esac
    done
}

# Who looks after the machine's name servers: resolved, resolvconf, or nobody but the file.
resolver() {
    if [[ -d /run/systemd/resolve ]] && command -v resolvectl >/dev/null &&
        { [[ $(readlink -f "$resolv") == /run/systemd/resolve/* ]] || grep -qs '^nameserver 127\.0\.0\.53' "$resolv"; } &&
        timeout 5 resolvectl status >/dev/null 2>&1; then
        echo resolved
    elif command -v resolvconf >/dev/null; then
        echo resolvconf
    else
        echo file
    fi
}

file_lines() {
    [[ ${#domains[@]} -eq 0 ]] || echo "search ${domains[*]}"
    printf 'nameserver %s\n' "${servers[@]}"
}

# The file is replaced, so that the one before, be it a link, is kept as it is. Only where that can not be, as for a
# mounted file, it is overwritten.
set_file() {
    local mark="# Korvan's tunnel; the file before: " first=
    [[ -f $resolv && ! -L $resolv ]] && read -r first <"$resolv"
    if [[ $first == "# Korvan's tunnel; "* ]]; then
        { echo "$first"; file_lines; } >"$resolv"
    elif ln -PT "$resolv" "$saved" 2>/dev/null; then
        { echo "$mark$saved"; file_lines; } >"$resolv.korvan-new" &&
            chmod 0644 "$resolv.korvan-new" && mv -fT "$resolv.korvan-new" "$resolv"
    elif [[ -f $resolv && ! -L $resolv ]]; then
        cp -fT "$resolv" "$folder/resolv.conf" &&
            { echo "$mark$folder/resolv.conf"; file_lines; } >"$resolv"
    elif [[ ! -e $resolv && ! -L $resolv ]]; then
        { echo "# Korvan's tunnel; there was no file before"; file_lines; } >"$resolv" && chmod 0644 "$resolv"
    else
        false
    fi
}

set_dns() {
    case $1 in
    resolved) resolvectl dns "$dev" "${servers[@]}" && resolvectl domain "$dev" "${domains[@]}" '~.' ;;
    resolvconf) file_lines | resolvconf -a "$dev.openvpn" 9>&- ;;
    file) set_file ;;
    esac || say "can not set the name servers ${servers[*]}"
}

# The tunnel's own packets may still go to the server, and to find the router.
block_ipv6() {
    local server=
    is_ipv6 "${trusted_ip6:-}" && server="ip6 daddr $trusted_ip6 accept"
    nft -f - <<END
table ip6 korvan_tunnel
delete table ip6 korvan_tunnel
table ip6 korvan_tunnel {
    chain output {
        type filter hook output priority 0; policy drop;
        oifname "lo" accept
        meta mark 0x4b6f accept
        icmpv6 type { nd-neighbor-solicit, nd-neighbor-advert, nd-router-solicit } accept
        $server
    }
    chain forward {
        type filter hook forward priority 0; policy drop;
    }
}
END
}

# In lock-down no name can be resolved, so compose falls back on the address that a name had here: lines "NAME ADDRESS".
# Of several names, only those count that have this address. Through a proxy the address is the proxy's.
note_remote() {
    local n name names=() address=${trusted_ip:-${trusted_ip6:-}} file=$folder/last-remote
    is_ipv4 "$address" || is_ipv6 "$address" || return
    for ((n = 1; n <= 100; n++)); do
        name=$(value remote $n)
        [[ -n $name ]] || break
        [[ $name != "$address" && -z $(value http_proxy_server $n)$(value socks_proxy_server $n) ]] || return
        is_name "$name" && ! is_ipv4 "$name" && [[ " ${names[*]} " != *" $name "* ]] && names+=("$name")
    done
    for name in "${names[@]}"; do
        [[ ${#names[@]} -eq 1 ]] || timeout 1 getent ahosts "$name" | grep -q "^$address " || continue
        { echo "$name $address"; grep -vs "^${name//./\\.} " "$file" | head -n 500; } >"$file.new"
        mv -fT "$file.new" "$file"
    done
}

# Only a host route that OpenVPN is about to make itself is down.sh's to remove.
host_route() {
    is_ipv4 "${trusted_ip:-}" && is_ipv4 "${route_net_gateway:-}" || return
    [[ -z $(ip -4 route show "$trusted_ip/32") ]] && echo "route $trusted_ip $route_net_gateway"
}

dev=${dev:-}
[[ $dev =~ ^[A-Za-z0-9_.-]{1,15}$ ]] || { say "no interface name: ${dev@Q}"; exit 1; }
pid=${daemon_pid:-$PPID}
[[ $pid =~ ^[0-9]+$ ]] || { say "no process number: ${pid@Q}"; exit 1; }
env -i /bin/bash "$down" --stale || exit 1
exec 9>>"$folder/tunnel-lock"
flock -w 10 9
read -ra fields <<<"$(sed 's/.*) //' "/proc/$pid/stat")"
[[ ${fields[0]:-Z} != [ZX] ]] || { say "OpenVPN has ended"; exit 1; }

servers=() domains=()
read_pushed_dns
note_remote
dns=none
[[ ${#servers[@]} -eq 0 ]] || dns=$(resolver)
printf '%s\n' "start ${fields[19]}" "dev $dev" "dns $dns" "$(host_route)" >"$folder/.tunnel.new"
mv -fT "$folder/.tunnel.new" "$folder/tunnel.$pid"

[[ $dns == none ]] || set_dns "$dns"
if [[ -z ${ifconfig_ipv6_local:-} && -e /proc/net/if_inet6 ]] && ! block_ipv6; then
    say "IPv6 can not be blocked; nft is in the package nftables"
    exec 9>&-
    daemon_pid=$pid /bin/bash "$down"
    exit 1
fi
exit 0
