#!/usr/bin/env bash
# What it costs that the window is not root: milliseconds from the click on Connect to the tunnel's route, with the window as
# root's one process and as a person's, in turn.
#   starts.sh [BUILD], build/release unless given; with the targets korvan_bundle, lab_service and prepare_state. ROUNDS: 10
set -euo pipefail
here=$(realpath "$0")
root=$(dirname "$(dirname "$here")")
build=$(realpath "${1:-$root/build/release}")
[ -n "${LAB_DIR:-}" ] || exec "$root/lab/lab" run --build "$build" -- bash "$here" "$build"

exec {number}< <(exec Xvfb -noreset -displayfd 1 -screen 0 1280x800x24 -nolisten tcp 2>/dev/null)
read -r -t 30 display <&"$number"
export DISPLAY=:$display
"$LAB" desktop "$build"
application=/opt/korvan/Korvan.app/Contents/MacOS
declare -A log=([root]=$application/log.txt [installed]=$LAB_DIR/people/ada/.local/share/korvan/log.txt) times

install -m 0755 "$build/demo/prepare_state" "$LAB_DIR/"
cp "$build/demo/prepare_state" $application/
$application/prepare_state alice wonderland-7 Examplia-1 stay
rm $application/prepare_state
"$LAB" as ada "$LAB_DIR/prepare_state" alice wonderland-7 Examplia-1 stay

# Clicks, and prints the milliseconds from then on to the route, or nothing.
connect() {
    python3 - <<'PYTHON'
import subprocess, time
monitor = subprocess.Popen(["ip", "-4", "monitor", "route"], stdout=subprocess.PIPE)
time.sleep(0.2)
clicked = time.monotonic()
subprocess.run(["xdotool", "click", "1"])
for line in monitor.stdout:
    if line.startswith(b"0.0.0.0/1 "):
        print("%.1f" % ((time.monotonic() - clicked) * 1000))
        break
monitor.kill()
PYTHON
}

# The middle of the button in a window at the screen's corner.
xdotool mousemove 210 403
for ((round = 0; round <= ${ROUNDS:-10}; round++)); do # the first one fetches the profile, and does not count
    for way in root installed; do
        rm -f "${log[$way]}"
        "$LAB" start $way ada >/dev/null 2>&1 & window=$!
        until grep -qs 'Version Current' "${log[$way]}"; do sleep 0.05; done # the last that the start asks for
        sleep 1.5
        taken=$(connect)
        [ $round -eq 0 ] || times[$way]+="$taken "
        kill -TERM $window
        wait $window || true
        while pgrep -x openvpn >/dev/null && pgrep -f "^$application/(network|broker)" >/dev/null; do sleep 0.05; done
        sleep 0.5
    done
done
for way in root installed; do
    tr ' ' '\n' <<<"${times[$way]}" | grep . | sort -n | awk -v way=$way '{ t[NR] = $1 }
        END { printf "%s: %.1f ms, the median of %d (%.1f to %.1f)\n", way, (t[int((NR + 1) / 2)] + t[int(NR / 2) + 1]) / 2, NR, t[1], t[NR] }'
done
