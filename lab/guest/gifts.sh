#!/usr/bin/env bash
# gifts.sh DISKS PACKAGE PREPARE KEYS: puts the package, a signed update to version 99.1 of the same build and the program
# that prepares a login on the second disk of the guest. Snapshots that hold another package, other keys of the lab or
# other steps are dropped.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
guest=$1 package=$2 prepare=$3 keys=$4
contents=$(cat "$package" "$prepare" "$0" "$keys/web.crt" "$guest/recipe" <(sed -n '/^prepare/,/^}/p' "$here/run.sh") | sha256sum)
[ "$(cat "$guest/gifts" 2>/dev/null)" != "$contents" ] || exit 0
rm -rf "$guest/prepared" "$guest/gifts" "$guest/gifts.folder"
for snapshot in installed window window-locking; do
    qemu-img snapshot -d "$snapshot" "$guest/state.qcow2" >/dev/null 2>&1 || true
done
mkdir "$guest/gifts.folder"
cp "$package" "$guest/gifts.folder/korvan.deb"
cp "$prepare" "$guest/gifts.folder/prepare_state"
build=$(dirname "$package")
"$here/../../scripts/make-update.sh" --sign "$build/lab/update.key" "$build" "$guest/gifts.folder/update.zip" 99.1 2>/dev/null
cp "$build/lab/update.pub" "$guest/gifts.folder/"
mkdir "$guest/gifts.folder/update"
(cd "$guest/gifts.folder/update" && unzip -q ../update.zip && find . -type f -exec md5sum {} + >../update.sums)
rm -r "$guest/gifts.folder/update"
truncate -s 16M "$guest/gifts.raw"
mke2fs -q -F -t ext4 -d "$guest/gifts.folder" "$guest/gifts.raw"
rm -r "$guest/gifts.folder"
echo "$contents" >"$guest/gifts"
