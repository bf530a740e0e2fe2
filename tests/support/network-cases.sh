#!/usr/bin/env bash
# network-cases.sh BUNDLE FILE [CASE...]: runs the functions case_... of FILE (all unless named), each as root in network,
# mount and process namespaces of its own, so that nothing of the machine is touched and nothing is left. FILE is read
# after network.sh and finds the helpers in $bundle. A case has a minute, and passes when it prints nothing.
set -u
here=$(dirname "$(realpath "$0")")
export bundle=$1
file=$2
shift 2
[ "$(id -u)" -eq 0 ] && [ -c /dev/net/tun ] || { echo "SKIPPED WHOLE TEST: it needs root and /dev/net/tun"; exit 0; }

cases=("${@/#/case_}")
[ $# -gt 0 ] || mapfile -t cases < <(sed -n 's/^\(case_[a-z0-9_]*\)() {$/\1/p' "$file")
failed=$((${#cases[@]} == 0))
for case in "${cases[@]}"; do
    printed=$(timeout -s KILL 60 unshare --net --mount --pid --fork --kill-child --mount-proc bash -c \
        '. "$0/network.sh" && own_machine && . "$1"; "$2"; echo ended' "$here" "$file" "$case" 2>&1 </dev/null)
    if [ "$printed" = ended ]; then
        echo "PASS   : $case"
    else
        printf 'FAIL!  : %s\n%s\n' "$case" "${printed%ended}"
        failed=1
    fi
done
exit "$failed"
