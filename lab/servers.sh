# shellcheck shell=bash disable=SC2154
# The OpenVPN servers and the profiles that lead to them. Sourced by the first process of a lab and by "lab ctl".

# Name, machine, protocol, port, third number of the tunnel's range 198.18.N.0/24, country. The lines of one machine
# differ in protocol or port.
servers="
Examplia-1               vpn1 udp 1194 1  Examplia
Examplia-1-TCP           vpn1 tcp 443  11 Examplia
Examplia-2-Routed        vpn2 udp 1194 2  Examplia
Examplia-2-Routed-TCP    vpn2 tcp 443  12 Examplia
Samplonia-Surfing-1      vpn3 udp 1194 3  Samplonia
Samplonia-Surfing-1-TCP  vpn3 tcp 443  13 Samplonia
Proxied-Samplonia        vpn4 udp 1194 4  Samplonia
Proxied-Samplonia-TCP    vpn4 tcp 443  14 Samplonia
Rejecting-1              vpn3 tcp 1195 23 Samplonia
Password-1               vpn4 udp 1195 24 Samplonia
"

# Calls the function with the fields of every server.
each_server() {
    local fields
    while read -ra fields; do
        [ ${#fields[@]} -eq 0 ] || "$1" "${fields[@]}"
    done <<<"$servers"
}

# Writes the users and their passwords to $LAB_DIR/users, name and password separated by a tab, and the profile of
# each to $LAB_DIR/profiles/. The web service and Password-1 read both at every request.
make_profiles() {
    local user
    mkdir -p "$LAB_DIR/servers" "$LAB_DIR/profiles"
    printf '%s\t%s\n' alice wonderland-7 bob 'a&b=c+d é' carol expired >"$LAB_DIR/users"
    for user in alice bob carol; do
        profile=$LAB_DIR/profiles/$user
        mkdir -p "$profile"
        cp "$LAB_KEYS/ca.crt" "$LAB_KEYS/tls.key" "$LAB_KEYS/$user.crt" "$LAB_KEYS/$user.key" "$profile"
        each_server make_profile
        printf 'Examplia-L2TP-1|203.0.113.21\nSamplonia-L2TP-1|203.0.113.23\n' >"$profile/L2TP.txt"
        # The ping table shows one line a machine.
        each_server skip_name | paste -s -d '|' | tr -d '\n' >"$profile/skiplist.dat"
    done
}

skip_name() {
    case $1 in *-TCP | Rejecting-* | Password-*) echo "$1" ;; esac
}

# The keepalive limits are short, so that a client learns within seconds that its server is gone. LAB_CONNECT_RETRIES is for
# clients that live slower: how often they try.
make_profile() {
    local name=$1 machine=$2 protocol=$3 port=$4
    cat >"$profile/$name.ovpn" <<-END
	client
	dev tun
	proto $protocol
	remote $machine.korvan.example $port
	nobind
	connect-retry 1 2
	connect-retry-max ${LAB_CONNECT_RETRIES:-2}
	cipher AES-256-GCM
	server-poll-timeout 5
	hand-window 10
	remote-cert-tls server
	ca ca.crt
	cert $user.crt
	key $user.key
	tls-crypt tls.key
	verb 3
	END
}

start_servers() {
    each_server configure_server
    each_server start_server
}

await_servers() {
    each_server await_server
}

# LAB_PING_EXIT is for clients that live slower: after how many silent seconds they give a server up, and it them.
configure_server() {
    local name=$1 machine=$2 protocol=$3 port=$4 range=198.18.$5
    {
        cat <<-END
	local 203.0.113.2${machine#vpn}
	port $port
	proto ${protocol/tcp/tcp-server}
	dev tun$5
	topology subnet
	server $range.0 255.255.255.0
	ca $LAB_KEYS/ca.crt
	cert $LAB_KEYS/server.crt
	key $LAB_KEYS/server.key
	tls-crypt $LAB_KEYS/tls.key
	dh none
	ping 2
	ping-restart $((${LAB_PING_EXIT:-8} + 2))
	push "ping 2"
	push "ping-exit ${LAB_PING_EXIT:-8}"
	script-security 2
	verb 3
	END
        case $name in
            # The subscriber's programs reach the world by the SOCKS proxy at the tunnel's far end, port 1080.
            Proxied-*) ;;
            *) printf 'push "redirect-gateway def1"\npush "dhcp-option DNS %s.1"\n' "$range" ;;
        esac
        case $name in
            Rejecting-*) echo "tls-verify /bin/false" ;;
            Password-*) echo "auth-user-pass-verify $lab/check-password.sh via-file" ;;
        esac
    } >"$LAB_DIR/servers/$name.conf"
}

start_server() {
    local name=$1 machine=$2 base=$LAB_DIR/servers/$1
    ip netns exec "$machine" openvpn --config "$base.conf" --setenv LAB_DIR "$LAB_DIR" --daemon \
        --writepid "$base.pid" --log-append "$base.log"
}

await_server() {
    local log=$LAB_DIR/servers/$1.log
    await "$1" "$log" grep -q "Initialization Sequence Completed" "$log"
}

# Waits until the command succeeds; 10 s are far more than anything here takes. When it never does, the end of the log
# tells why.
await() {
    local what=$1 log=$2 tries
    shift 2
    for ((tries = 0; tries < 1000; tries++)); do
        "$@" >/dev/null 2>&1 && return
        sleep 0.01
    done
    tail -n 5 "$log" >&2
    fail "$what is not there in time"
}

# Makes the server push one more option, which it learns by starting anew.
push_option() {
    control_server stop "$1"
    echo "push \"$2\"" >>"$LAB_DIR/servers/$1.conf"
    control_server start "$1"
}

# "lab ctl": ACTION SERVER. Vanishing takes the server's whole machine off the network, in both directions.
control_server() {
    local action=$1 fields pid address direction
    read -ra fields < <(grep "^$2 " <<<"$servers") || fail "no server $2"
    address=203.0.113.2${fields[1]#vpn}
    case $action in
        stop)
            pid=$(cat "$LAB_DIR/servers/$2.pid") || fail "$2 is not running"
            kill "$pid"
            await "the end of $2" "$LAB_DIR/servers/$2.log" test ! -e "/proc/$pid"
            ;;
        start)
            : >"$LAB_DIR/servers/$2.log"
            start_server "${fields[@]}"
            await_server "${fields[@]}"
            ;;
        vanish) for direction in from to; do ip -n world rule add "$direction" "$address" blackhole; done ;;
        appear) for direction in from to; do ip -n world rule del "$direction" "$address" blackhole; done ;;
        *) usage ;;
    esac
}
