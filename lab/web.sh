# shellcheck shell=bash
# The web service and the proxies. Sourced by the first process of a lab.

start_web() {
    local countries=() n
    each_server add_country
    # Also what leaves a server's own proxy, and the proxies of the world.
    for n in 1 2; do countries+=(--country "203.0.113.2$n=Examplia"); done
    for n in 3 4; do countries+=(--country "203.0.113.2$n=Samplonia"); done
    countries+=(--country 203.0.113.30=Proxyland --country 198.51.=Homeland --country 2001:db8:=Homeland)
    mkdir "$LAB_DIR/archives"
    "$LAB_BUILD/lab/lab_service" site --users "$LAB_DIR/users" --profiles "$LAB_DIR/profiles" \
        --archives "$LAB_DIR/archives" \
        --certificate "$LAB_KEYS/web.crt" --key "$LAB_KEYS/web.key" "${countries[@]}" >"$LAB_DIR/web.log" 2>&1 &
    for n in 1 2 3 4; do
        ip netns exec "vpn$n" "$LAB_BUILD/lab/lab_service" speedtest >"$LAB_DIR/speedtest$n.log" 2>&1 &
    done
}

add_country() {
    countries+=(--country "198.18.$5.=$6")
}

# HTTP and SOCKS proxies in the world, and the one at the far end of the "Proxied-" tunnels. All bind their outgoing
# connections to their own address, so that a server sees the proxy and not the world behind it.
start_proxies() {
    start_http_proxy http-proxy "$LAB_HTTP_PROXY"
    start_http_proxy http-auth-proxy "$LAB_HTTP_AUTH_PROXY" "BasicAuth $LAB_PROXY_USER $LAB_PROXY_PASSWORD"
    microsocks -i "${LAB_SOCKS_PROXY%:*}" -p "${LAB_SOCKS_PROXY#*:}" -b "${LAB_SOCKS_PROXY%:*}" \
        >"$LAB_DIR/socks-proxy.log" 2>&1 &
    ip netns exec vpn4 microsocks -b 203.0.113.24 >"$LAB_DIR/tunnel-proxy.log" 2>&1 &
}

# Name of its log, address and port, further lines of its settings.
start_http_proxy() {
    cat >"$LAB_DIR/$1.conf" <<-END
	Listen ${2%:*}
	Port ${2#*:}
	Bind ${2%:*}
	Timeout 600
	MaxClients 100
	LogFile "$LAB_DIR/$1.log"
	LogLevel Info
	${3:-}
	END
    tinyproxy -d -c "$LAB_DIR/$1.conf" >"$LAB_DIR/$1.out" 2>&1 &
}

await_web() {
    local log
    for log in web speedtest1 speedtest2 speedtest3 speedtest4; do
        await "the web service" "$LAB_DIR/$log.log" grep -q ready "$LAB_DIR/$log.log"
    done
    await_proxy http-proxy "$LAB_HTTP_PROXY"
    await_proxy http-auth-proxy "$LAB_HTTP_AUTH_PROXY"
    await_proxy socks-proxy "$LAB_SOCKS_PROXY"
}

await_proxy() {
    await "$1" "$LAB_DIR/$1.log" bash -c "exec 3<>/dev/tcp/${2/:/\/}"
}
