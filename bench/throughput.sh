#!/usr/bin/env bash
# What a tunnel carries with the guard loaded, next to OpenVPN with the same profile and without a guard, forty pairs in
# turn, and how many ticks of processor time the guardian takes in ten seconds in which nothing changes. The two are alike
# but for the guard: OpenVPN asks for its management port before every packet, which costs more than the guard does, so a
# third one without that port is told, too. What is carried is told by second of processor time, which limits it, so that
# whatever else the machine does counts less. Runs in a lab, as root:
#   lab/lab run -- bench/throughput.sh build/release/Korvan.app
set -euo pipefail
bundle=$(realpath "$1")/Contents/MacOS
app=/run/app
mkdir -p "$app/cfg"
cp -a "$bundle"/{compose,network,up.sh,down.sh,tools} "$app"
cp -a "$LAB_PROFILES" "$app/cfg/OpenVPN"
cp "$(command -v bash)" "$app/Korvan"
tc -n world qdisc del dev vpn1 root # the line is not to be the limit
tc -n vpn1 qdisc del dev eth0 root

ticks() { awk '{ print $14 + $15 }' "/proc/$1/stat"; }

# Mbit that the OpenVPN of this process and who reads from its tunnel carry by second of processor time.
measure() {
    local before taken TIMEFORMAT='%U %S' file=http://198.18.1.1:8080/korvantest.dat # of 8 MB
    before=$(ticks "$1")
    taken=$({ time curl -s -m 60 -o /dev/null $file -o /dev/null $file -o /dev/null $file -o /dev/null $file; } 2>&1)
    echo "$taken $(($(ticks "$1") - before))" | awk '{ printf "%.1f\n", 4 * 8 * 8.388608 / ($1 + $2 + $3 / 100) }'
}

await_tunnel() {
    for ((n = 0; n < 3000; n++)); do
        ! grep -q "Initialization Sequence Completed" "$1" || return 0
        sleep 0.01
    done
    tail "$1"
    return 1
}

plain() { # further options of OpenVPN
    openvpn --config "$app/cfg/OpenVPN/Examplia-1.ovpn" --cd "$app/cfg/OpenVPN" "$@" >/run/plain.log &
    local pid=$!
    await_tunnel /run/plain.log
    measure $pid
    kill $pid
    wait $pid || true
}

# As the program does it: its process starts OpenVPN and deletes the default route.
export app
cat >"$app/program" <<'END'
"$app/compose" --config "$app/cfg/OpenVPN/Examplia-1.ovpn" --cd "$app/cfg/OpenVPN/" --management 127.0.0.1 44358 \
    --script-security 2 --up "$app/up.sh" --down "$app/down.sh" >/run/korvan.log 2>&1 &
echo $! >/run/korvan.pid
read -r
"$app/tools/route" delete 0.0.0.0 mask 0.0.0.0 "$LAB_HOME.1" >/dev/null
echo locked
read -r
"$app/down.sh" &
kill %1
wait
"$app/tools/route" add 0.0.0.0 mask 0.0.0.0 "$LAB_HOME.1" >/dev/null
END

korvan() {
    local before guardian
    : >/run/korvan.log
    coproc "$app/Korvan" "$app/program"
    await_tunnel /run/korvan.log
    echo >&"${COPROC[1]}"
    read -r _ <&"${COPROC[0]}"
    measure "$(</run/korvan.pid)"
    if [ "${1:-}" = ticks ]; then
        sleep 1
        guardian=$(pgrep -fx "$app/network watch .*")
        before=$(ticks "$guardian")
        sleep 10
        echo "the guardian: $(($(ticks "$guardian") - before)) ticks in 10 s" >&2
    fi
    echo >&"${COPROC[1]}"
    # shellcheck disable=SC2154
    wait "$COPROC_PID"
}

median() { sort -n | awk '{ v[NR] = $1 } END { printf "%.3f\n", (v[int((NR + 1) / 2)] + v[int(NR / 2) + 1]) / 2 }'; }

managed() { plain --management 127.0.0.1 44359; }
# The median of a column, or of one divided by another, round by round.
column() { awk -v over="${2:-0}" -v column="$1" '{ print over ? $column / $over : $column }' /run/carried | median; }

# The runs of a round follow each other at once, in an order that changes: a machine that is slow for a while is slow for
# all of them.
korvan ticks >/dev/null
for ((round = 0; round < 20; round++)); do
    first=$(plain)
    echo "$first $(managed) $(korvan)"
    with=$(korvan)
    first=$(managed)
    echo "$(plain) $first $with"
done >/run/carried
echo "Mbit by second of processor time: $(column 3) through the guard, $(column 2) without one," \
    "$(column 1) without a management port"
ratio=$(column 3 2)
echo "ratio to the last: $(column 3 1)"
echo "ratio: $ratio, the median of 40 pairs (limit 0.98)"
awk "BEGIN { exit $ratio < 0.98 }"
