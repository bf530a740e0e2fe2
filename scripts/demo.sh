#!/usr/bin/env bash
# Shows Korvan at work: installs what is missing, builds the client, brings the lab up, installs the client in it and
# starts it as an ordinary person does, with a remembered login, so that it logs in and connects by itself.
#
#   --headless   on a screen of its own, unattended: waits until connected, takes a picture of every page to
#                build/demo/, prints one table, disconnects; ends with 0 only if all of it was seen. The default where
#                there is no display.
#   --slow-tour  walks all pages and statuses in a window, for somebody who watches; then again, without a connection,
#                light and dark, in three languages and at three scales, and leaves pictures in build/demo/pictures/.
# Without either the window opens on your display and stays until you quit it.
set -euo pipefail
cd "$(dirname "$0")/.."

mode=window
[ -n "${DISPLAY:-}" ] || mode=headless
case ${1:-} in
    --headless) mode=headless ;;
    --slow-tour) mode=slow-tour ;;
    '') ;;
    *) sed -n '2,/^set/s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
esac

started=$EPOCHREALTIME
scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target korvan_bundle lab_service prepare_state

demo=$PWD/build/demo
rm -rf "$demo"
mkdir -p "$demo"
# The lab covers /run, where the display's cookie may be.
if [ "$mode" != headless ] && [ -n "${XAUTHORITY:-}" ]; then
    install -m 0600 "$XAUTHORITY" "$demo/cookie"
    export XAUTHORITY=$demo/cookie
fi
screen=()
[ "$mode" != headless ] && [ -n "${DISPLAY:-}" ] || screen=(scripts/with-screen.sh)
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo --preserve-env=DISPLAY,XAUTHORITY)
"${screen[@]}" "${as_root[@]}" env KORVAN_BUILD="$PWD/build/release" DEMO_STARTED="$started" \
    lab/lab run -- scripts/demo/tour.sh "$mode" "$demo"
[ "$mode" != slow-tour ] || scripts/demo/pictures.sh "$demo/pictures"
