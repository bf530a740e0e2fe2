#!/usr/bin/env bash
# An ordinary person's window updates the installed program: update.sh BUILD, on a screen, in a lab. The update comes from
# the service; without a signature, with a wrong one, with an old one it is refused, with a right one the new program is
# the person's process again, in both starts that are not root's.
set -euo pipefail
source=$(realpath "$(dirname "$0")/../..")
build=$1
application=/opt/korvan/Korvan.app/Contents/MacOS
failed=0

# is WHAT EXPECTED COMMAND...: the command comes to print this within a minute.
is() {
    local limit=$((SECONDS + 60)) said
    while said=$("${@:3}" 2>&1 || true); [ "$said" != "$2" ]; do
        [ "$SECONDS" -lt "$limit" ] || { echo "FAIL!  : $person: $1: \"$said\" in place of \"$2\""; failed=1; return 0; }
        sleep 0.1
    done
}
owners() { ps -C Korvan -o user=,pid= | awk '{ print $1 }'; }
said() { grep -oE "$1" "$state/log.txt"; }
left() { find /opt/korvan -mindepth 1 -maxdepth 1 -printf '%f\n'; find "$state" -name 'update*' -printf '%f\n'; }

# put SIGNATURE-FILE: as if the window had downloaded it.
put() {
    "$LAB" as "$person" mkdir -p "$state/update"
    install -o "$person" "$work/update.zip" "$state/update/update.zip"
    install -o "$person" "$1" "$state/update/update.zip.minisig"
}

"$LAB" desktop "$build"
work=$(mktemp -d -p "$LAB_DIR")
number=98.7.6
for pair in ada:installed ben:set-user-id; do
    person=${pair%:*} start=${pair#*:} state=$LAB_DIR/people/${pair%:*}/.local/share/korvan
    tail -n 1 "$build/lab/update.pub" >"$application/update-keys" # an update brings its own keys, or none
    "$source/scripts/make-update.sh" --sign "$build/lab/update.key" "$build" "$work/update.zip" "$number" 2>/dev/null
    rm -f "$work/o."*
    minisign -G -W -p "$work/o.pub" -s "$work/o.key" >/dev/null
    : >"$work/none"
    minisign -S -m "$work/update.zip" -x "$work/wrong" -s "$work/o.key" -t "Korvan $number" >/dev/null
    minisign -S -m "$work/update.zip" -x "$work/old" -s "$build/lab/update.key" -t "Korvan 1.0" >/dev/null
    before=$(<"$application/version")
    for kind in none wrong old; do
        put "$work/$kind"
        "$LAB" start "$start" "$person" -hide >/dev/null 2>&1 &
        xdotool search --sync --onlyvisible --name '^Update$' >/dev/null
        case $kind in
            none) reason='it is not signed' ;;
            wrong) reason='it is signed with a key that this program does not know' ;;
            old) reason="its version 1.0 is older than the installed $before" ;;
        esac
        is "log of \"$kind\"" "Update failed, $reason" said "Update failed, $reason"
        while box=$(xdotool search --onlyvisible --name '^Update$'); do
            xdotool windowactivate "${box%%$'\n'*}" key Return 2>/dev/null || true
            sleep 0.3
        done
        is "window after \"$kind\"" "$person" owners
        is "left of \"$kind\"" Korvan.app left
        kill "$(pgrep -x Korvan)"
        wait $! || true
    done
    put "$work/update.zip.minisig"
    "$LAB" start "$start" "$person" -hide >/dev/null 2>&1 || true
    is "version" "$number" cat "$application/version"
    is "log" "SUCCESS: updated from $before to $number" said 'SUCCESS: updated from .*[0-9]'
    is "window" "$person" owners
    is "leftovers" Korvan.app left
    kill "$(pgrep -x Korvan)"
    is "end" "" owners
    number=98.7.7
done
exit $failed
