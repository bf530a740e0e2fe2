#!/usr/bin/env bash
# The first process of a lab, in namespaces of its own: builds everything, then runs the command. When it ends, the
# kernel ends all other processes of the lab.
set -euo pipefail

lab=$(dirname "$(realpath "$0")")
export LAB_DIR=/run/lab LAB_PROFILES=/run/lab/profiles/alice
# On the gateway's address in the subscriber's own network, which no change of the default route cuts off.
export LAB_CONTROL=http://$LAB_HOME.1:9090
export LAB_HTTP_PROXY=203.0.113.30:3128 LAB_HTTP_AUTH_PROXY=203.0.113.30:3129 LAB_SOCKS_PROXY=203.0.113.30:1080
export LAB_PROXY_USER=proxyuser LAB_PROXY_PASSWORD=proxypass

fail() {
    echo "lab: $*" >&2
    exit 1
}

# The lab's own /run and /etc. /etc is a copy, so that programs may replace files in it as they do on a real machine.
private_folders() {
    mount -t tmpfs -o mode=755 lab /run
    mkdir -p /run/lock "$LAB_DIR/etc"
    cp -a /etc/. "$LAB_DIR/etc"
    rm -f "$LAB_DIR/etc/hosts" "$LAB_DIR/etc/resolv.conf"
    cat >"$LAB_DIR/etc/hosts" <<-END
	127.0.0.1 localhost
	::1 localhost
	203.0.113.10 korvan.example www.korvan.example api.korvan.example portal.korvan.example help.korvan.example
	203.0.113.10 ip.korvan.example
	203.0.113.21 vpn1.korvan.example
	203.0.113.22 vpn2.korvan.example
	203.0.113.23 vpn3.korvan.example
	203.0.113.24 vpn4.korvan.example
	203.0.113.30 proxy.korvan.example
	END
    # Nobody listens there for name queries, so that an unknown name fails at once.
    echo "nameserver $LAB_HOME.1" >"$LAB_DIR/etc/resolv.conf"
    mount --bind "$LAB_DIR/etc" /etc
}

# shellcheck source=network.sh
. "$lab/network.sh"
# shellcheck source=servers.sh
. "$lab/servers.sh"
# shellcheck source=web.sh
. "$lab/web.sh"

LAB_PIN=$(openssl x509 -in "$LAB_KEYS/web.crt" -pubkey -noout | openssl pkey -pubin -outform der | sha256sum)
export LAB_PIN=${LAB_PIN%% *}
private_folders
make_network
make_profiles
start_servers
start_web
start_proxies
await_servers
await_web
LAB_UP_MS=$(((${EPOCHREALTIME/[.,]/} - LAB_STARTED) / 1000))
export LAB_UP_MS

# Not exec: this shell has to outlive the command to reap what that leaves behind.
status=0
ip netns exec home "$@" || status=$?
exit $status
