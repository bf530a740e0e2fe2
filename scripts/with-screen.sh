#!/usr/bin/env bash
# with-screen.sh COMMAND...: runs COMMAND on an X server without a screen (Xvfb) of its own, with a window manager and a
# tray, and ends with COMMAND's exit status. The screen has $SCREEN_SIZE or 1280x800 pixels; $SCREEN_TRAY is the tray's
# process.
set -euo pipefail

unset XAUTHORITY WAYLAND_DISPLAY QT_QPA_PLATFORM
# A server that resets after its first client would cut off the next one. One in another process namespace, as the lab's
# are, takes every number for free, with the socket of whoever has it.
exec {number}< <(exec Xvfb ":$((1000 + RANDOM))" -noreset -displayfd 1 -screen 0 "${SCREEN_SIZE:-1280x800}x24" -nolisten tcp 2>/dev/null)
children=($!)
trap 'kill "${children[@]}" 2>/dev/null || true' EXIT
read -r -t 30 display <&"$number" || { echo "with-screen: Xvfb does not start" >&2; exit 1; }
export DISPLAY=:$display
openbox --sm-disable >/dev/null 2>&1 &
children+=($!)
trayer --edge bottom --align right --width 10 >/dev/null 2>&1 &
export SCREEN_TRAY=$!
children+=("$SCREEN_TRAY")
until xdotool search --class trayer >/dev/null 2>&1; do
    kill -0 "$SCREEN_TRAY" 2>/dev/null || { echo "with-screen: the tray does not start" >&2; exit 1; }
    sleep 0.05
done
status=0
"$@" || status=$?
exit "$status"
