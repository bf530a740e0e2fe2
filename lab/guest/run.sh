#!/usr/bin/env bash
# run.sh DISKS CASE: one case in a guest, with the lab's service and servers beside it; "lab run" runs this. Prints its row:
# case, what the person was told, seconds, packets past the tunnel. DISKS is a folder that image.sh made. The case "prepare"
# takes the snapshots from which the others start, "shell" reads commands for root from standard input.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
guest=$1 name=$2
. "$here/machine.sh"
. "$here/desktop.sh"
. "$here/cases.sh"
. "$here/cases-l2tp.sh"
trap '[ -z "${guest_emulator:-}" ] || guest_cut' EXIT

prepare() {
    rm -f "$guest/state.qcow2"
    guest_start
    await_desktop
    guest_save clean
    guest_do root 'apt-get install -q -y /mnt/korvan.deb' >"$guest_run/apt.log" 2>&1 || guest_fail "$(cat "$guest_run/apt.log")"
    guest_do root sync
    guest_save installed
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
told='' leaks=-
guest_start "${!from:-installed}"
began=$SECONDS
"case_$name"
printf '%-14s %-50s %5d %6s\n' "$name" "$told" $((SECONDS - began)) "$leaks"
