#!/usr/bin/env bash
# debian-root.sh SUITE COMMAND...: runs COMMAND in a clean copy of this tree on a Debian of that suite (bookworm, trixie),
# as root of a system of its own: what is committed, cloned to /root/korvan there, without any build. The system is made
# by debootstrap at the first run, from where this machine gets its own packages, and kept in build/debian/SUITE with what
# scripts/setup.sh installed there. Example: scripts/debian-root.sh trixie scripts/test.sh
set -euo pipefail
cd "$(dirname "$0")/.."

[ $# -ge 2 ] || { sed -n '2,5s/^# \{0,1\}//p' "$0" >&2; exit 2; }
[ "$(id -u)" -eq 0 ] || { echo "debian-root: it needs root" >&2; exit 1; }
suite=$1
shift
root=$PWD/build/debian/$suite
scripts/setup.sh

make_root() {
    local from
    # shellcheck disable=SC2016
    from=$(apt-get indextargets --format '$(COMPONENT) $(REPO_URI)' "Created-By: Packages" |
        awk '$1 == "main" { print $2; exit }')
    rm -rf "$root"
    mkdir -p "$root"
    debootstrap --variant=minbase --include=ca-certificates,git "$suite" "$root" "$from"
    printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d" # no service starts by being installed
    chmod 755 "$root/usr/sbin/policy-rc.d"
    touch "$root/.complete"
}
[ -e "$root/.complete" ] || make_root

rm -rf "$root/root/korvan"
git clone -q . "$root/root/korvan"

# Mounts and processes of its own, which go with the command. /dev is the machine's, for /dev/net/tun.
# shellcheck disable=SC2016
exec unshare --mount --pid --fork --kill-child bash -c '
    set -e
    root=$1
    shift
    mount --bind "$root" "$root"
    mount -t proc proc "$root/proc"
    mount -t sysfs sysfs "$root/sys"
    mount --rbind /dev "$root/dev"
    mount -t tmpfs -o mode=755 run "$root/run"
    mount -t tmpfs tmpfs "$root/tmp"
    cp /etc/hosts "$root/etc/"
    cp -L --remove-destination /etc/resolv.conf "$root/etc/resolv.conf"
    # The root of everything, not just of this command: a program that takes a mount namespace of its own would else be
    # told its path as it is outside.
    cd "$root"
    pivot_root . .
    umount -l .
    cd /root/korvan
    exec /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive CI="${CI:-}" ${http_proxy:+http_proxy="$http_proxy"} "$@"
' bash "$root" "$@"
