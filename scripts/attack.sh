#!/usr/bin/env bash
# attack.sh NAME [ARGUMENT...]: tries what an attacker would and prints a table of the tries and of what came of them; the
# exit status is 1 when anything did. The attacks are attack/NAME.sh.
set -euo pipefail
root=$(dirname "$(dirname "$(realpath "$0")")")
attack=$root/attack/${1:-}.sh
if [ $# -eq 0 ] || [ ! -f "$attack" ]; then
    echo "usage: attack.sh NAME [ARGUMENT...], NAME one of: $(cd "$root/attack" && echo *.sh | sed 's/\.sh//g')" >&2
    exit 2
fi
shift
exec bash "$attack" "$@"
