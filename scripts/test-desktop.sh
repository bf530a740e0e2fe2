#!/usr/bin/env bash
# test-desktop.sh [12|13] [CASE...]: Korvan's package on a desktop of that Debian (13 unless given), in an emulated machine
# beside the lab's service and servers. Runs the cases named, or all, and prints a table: case, what the person was told,
# seconds, packets past the tunnel. Needs root and /dev/net/tun; takes minutes, and the network at the first run. What is
# made stays in build/guest/. The case "shell" reads commands for the guest from standard input.
set -euo pipefail
cd "$(dirname "$0")/.."

declare -A suites=([12]=bookworm [13]=trixie)
debian=13
case ${1:-} in 12 | 13) debian=$1; shift ;; esac
scripts/setup.sh guest
if [ -z "${KORVAN_BUILD:-}" ]; then
    export KORVAN_BUILD=$PWD/build/release
    cmake --preset release >/dev/null
    cmake --build --preset release --target korvan_bundle lab_service prepare_state >/dev/null
    (cd "$KORVAN_BUILD" && cpack -G DEB >/dev/null)
fi
package=$(ls "$KORVAN_BUILD"/korvan_*.deb)
guest=$(lab/guest/image.sh "${suites[$debian]}" "$package")

# An emulated machine is slow to answer.
export LAB_PING_EXIT=40 LAB_CONNECT_RETRIES=30
run_case() { lab/lab run -- lab/guest/run.sh "$guest" "$@"; }

exec 9>"$guest/lock"
flock 9
lab/guest/gifts.sh "$guest" "$package" "$KORVAN_BUILD/demo/prepare_state" "$(lab/lab keys)"
[ -e "$guest/prepared" ] || { run_case prepare && touch "$guest/prepared"; }

[ $# -gt 0 ] || mapfile -t cases < <(sed -n 's/^case_\([a-z0-9_]*\)().*/\1/p' lab/guest/cases*.sh)
failed=()
printf '%-20s %-66s %5s %6s\n' case "what the person was told" seconds leaked
for name in "${@:-${cases[@]}}"; do
    run_case "$name" || { failed+=("$name"); printf '%-20s FAILED\n' "$name"; }
done
[ ${#failed[@]} -eq 0 ]
