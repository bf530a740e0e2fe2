#!/usr/bin/env bash
# run.sh DISKS CASE: one case in a guest, with the lab's service and servers beside it; "lab run" runs this. Prints its row:
# case, what the person was told, seconds, packets past the tunnel. DISKS is a folder that image.sh made. The case "prepare"
# takes the snapshots from which the others start: "clean" has no package, "installed" has it, in "window" ada has signed in, in
# "window-locking" with lock-down. "shell" reads commands from standard input.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
guest=$1 name=$2 told='' leaks=-
. "$here/machine.sh"
. "$here/desktop.sh"
for file in "$here"/cases*.sh; do
    . "$file"
done
trap '[ -z "${guest_emulator:-}" ] || guest_cut' EXIT

prepare() {
    if guest_has clean; then
        guest_start clean
    else
        rm -f "$guest/state.qcow2"
        guest_start
        await_desktop
        guest_save clean
    fi
    guest_do root 'apt-get install -q -y /mnt/korvan.deb' >"$guest_run/apt.log" 2>&1 || guest_fail "$(cat "$guest_run/apt.log")"
    guest_do root sync
    guest_save installed
    prepare_window
    guest_save window
    guest_do ada "kill \$(pgrep -x Korvan)"
    eventually 60 root '! pgrep -x "Korvan|broker"'
    prepare_window lock-down
    guest_save window-locking
}

# Ada has signed in and could press "Connect".
prepare_window() {
    sign_in "$@"
    start_korvan
    eventually 60 root "grep -q 'Version Current' $log"
    guest_do root sync
}

guest_network
case $name in
    prepare) prepare; exit ;;
    shell)
        guest_start "${3:-installed}"
        while IFS= read -r line; do
            case $line in
                ada\ *) guest_do ada "${line#ada }" || echo "($?)" ;;
                host\ *) eval "${line#host }" || echo "($?)" ;;
                *) guest_do root "$line" || echo "($?)" ;;
            esac
        done
        exit
        ;;
esac
from=from_$name
guest_start "${!from:-installed}"
began=$SECONDS
"case_$name" >&2 # what its commands say is none of the table's
printf '%-20s %-66s %5d %6s\n' "$name" "$told" $((SECONDS - began)) "$leaks"
