#!/usr/bin/env bash
# make-update.sh [--sign KEY] BUILD ARCHIVE [VERSION]: packs the bundle of a finished build folder, without any state of a
# user, as an update archive. VERSION is put in place of the build's own. With --sign the secret key in the file KEY
# (docs/updates.md) signs the archive: the signature is written to ARCHIVE.minisig.
set -euo pipefail

key=
[ "${1:-}" != --sign ] || { key=$(realpath "${2:-}"); shift 2; }
if [ $# -lt 2 ] || [ $# -gt 3 ]; then
    echo "usage: make-update.sh [--sign KEY] BUILD ARCHIVE [VERSION]" >&2
    exit 2
fi
bundle=$1/Korvan.app
archive=$(realpath -m "$2")
macos=Korvan.app/Contents/MacOS
for name in Korvan broker standin version compose compose4 composec compose6 compose7 compose9 network up.sh down.sh \
    tools/defaults tools/netstat tools/ping tools/route; do
    [ -f "$1/$macos/$name" ] || { echo "make-update: $1/$macos/$name is missing, build everything first" >&2; exit 1; }
done

# shellcheck source=/dev/null
. "$1/names/names.sh"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -a "$bundle" "$work"
cd "$work"
# shellcheck disable=SC2086,SC2154
(cd $macos && rm -rf $state_kept $state_passing)
[ $# -lt 3 ] || printf %s "$3" >$macos/version
if [ -n "$(find Korvan.app ! -type f ! -type d -print -quit)" ]; then
    echo "make-update: the bundle holds links, which no update may" >&2
    exit 1
fi
mkdir -p "$(dirname "$archive")"
rm -f "$archive"
zip -q -r -X "$archive" Korvan.app
# What the program would do with it.
"$macos/compose7" -o "$archive" -d unpacked/
diff -r Korvan.app unpacked/Korvan.app

[ -n "$key" ] || exit 0
minisign -S -s "$key" -m "$archive" -x "$archive.minisig" -t "Korvan $(cat $macos/version)" >/dev/null
# shellcheck disable=SC2154
if [ -e "$macos/$update_keys_file" ]; then
    "$macos/compose9" --check "$archive" "$archive.minisig"
else
    echo "make-update: this build has no KORVAN_UPDATE_KEYS: once installed it takes unsigned updates" >&2
fi
