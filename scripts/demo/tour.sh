#!/usr/bin/env bash
# The part of the demo that runs in the lab, on the subscriber's machine: tour.sh MODE OUTPUT-FOLDER.
set -euo pipefail

mode=$1 output=$2
application=/opt/korvan/Korvan.app/Contents/MacOS
log=$LAB_DIR/people/ada/.local/share/korvan/log.txt
seen=true

now() { echo "${EPOCHREALTIME/[.,]/}"; }

# Prints a row of the table: a step, its end in seconds since the client was started, a remark.
row() { printf '%-22s %8s  %s\n' "$1" "$(printf '%d.%03d' $((($(now) - began) / 1000000)) $((($(now) - began) / 1000 % 1000)))" "${2:-}"; }

# Waits until a command succeeds, at most so many seconds.
await() {
    local limit=$(($(now) + $1 * 1000000))
    shift
    until "$@"; do
        [ "$(now)" -lt "$limit" ] || { echo "demo: not seen: $*" >&2; seen=false; return 0; }
        sleep 0.05
    done
}

logged() { grep -q "$1" "$log" 2>/dev/null; }
no_tunnel() { ! ls /sys/class/net | grep -q '^tun'; }
# The search fails when any window goes while it lasts.
has_window() { window=$(xdotool search --onlyvisible --name '^Korvan$' 2>/dev/null | head -n 1) && [ -n "$window" ]; }
# Where the IP test page sees this machine: "ADDRESS, COUNTRY".
whereabouts() {
    curl -s -m 10 http://ip.korvan.example/testip.php |
        sed -n 's/.*in \(.*\)? .*: \([0-9.]*\)<.*/\2, \1/p'
}
click() { xdotool mousemove --window "$window" "$1" "$2" click 1; }
picture() { import -window "$window" "$output/$1.png"; }

# The middle of each page's tab.
declare -A tabs=([dashboard]=78 [log]=195 [settings]=300 [proxy]=400 [status]=518)

# Whose process a program of the bundle is, and what it may do beyond that.
rights() {
    local process
    process=$(pgrep -f "^$application/$1") || return
    echo "$(ps -o user= -p "$process"), capabilities $(sed -n 's/^CapEff:\t//p' "/proc/$process/status")"
}

# As the package brings it; the service is known by its key, and updates by theirs.
install_korvan() {
    "$LAB" desktop "$LAB_BUILD"
    printf '[SERVICE]\nPINS=%s\n' "$LAB_PIN" >"$application/setting.ini"
    tail -n 1 "$LAB_BUILD/lab/update.pub" >"$application/update-keys"
    cp "$LAB_BUILD/demo/prepare_state" "$LAB_DIR/"
    "$LAB" as ada "$LAB_DIR/prepare_state" alice wonderland-7 Examplia-1
}

tour() {
    local page pause=$1 prefix=$2
    for page in dashboard log settings proxy status; do
        click "${tabs[$page]}" 72
        xdotool mousemove --window "$window" 870 40
        sleep "$pause"
        [ "$mode" != headless ] || picture "$prefix$page"
    done
    click "${tabs[dashboard]}" 72
}

install_korvan
before=$(whereabouts)
began=$(now)
"$LAB" start installed ada >"$output/client.log" 2>&1 &
client=$!
trap 'kill $client 2>/dev/null || true' EXIT
if [ "$mode" = window ]; then
    wait $client
    exit
fi

echo "step                    seconds"
await 30 has_window
row "window open" "$(rights Korvan)"
await 30 logged 'SUCCESS: download .* user profile'
row "logged in"
await 60 logged 'Initialization Sequence Completed'
row "connected" "Examplia-1; the root part: $(rights broker)"
await 10 test "$(whereabouts)" != "$before"
after=$(whereabouts)
row "seen from outside" "before: $before; now: $after"
[ -n "$after" ] && [ "$after" != "$before" ] || seen=false
curl -s -m 20 -o /dev/null "http://203.0.113.10/faqs.php" || true
sleep 2.5 # one tick of the traffic figures
bytes=$(cat /sys/class/net/tun*/statistics/{rx,tx}_bytes | paste -s -d ' ')
row "bytes through tunnel" "received and sent: $bytes"
pause=0.5
[ "$mode" = headless ] || pause=3
tour "$pause" connected-
row "pages walked"

click 210 403 # Disconnect
await 30 no_tunnel
await 30 logged 'disconnecting from the network'
sleep 3.5 # the engine takes three seconds to close
row "disconnected"

click "${tabs[status]}" 72
click 100 177 # the second server
click 347 545 # Run speed test
sleep 3
row "server tested"
tour "$pause" disconnected-
click 806 142 # Change user
sleep "$pause"
[ "$mode" != headless ] || picture sign-in
kill -TERM $client
wait $client || seen=false
trap - EXIT
row "client ended"
$seen || { echo "demo: not everything was seen; the client's log is $log" >&2; exit 1; }
