#!/usr/bin/env bash
# The package's life (life.sh) on a clean Debian 12: clean-system.sh BUILD, whose package is used. The system and the
# packages that Korvan depends on come from where this machine gets its own, and are kept in build/debootstrap, so that
# a second run needs no network.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
source=$(realpath "$here/../..")
build=$(realpath "$1")
store=$source/build/debootstrap
suite=bookworm

# shellcheck disable=SC2015
[ "$(id -u)" -eq 0 ] && [ -c /dev/net/tun ] || { echo "SKIPPED WHOLE TEST: it needs root and /dev/net/tun"; exit 0; }

# From where this machine gets that suite.
make_system() {
    local from
    # shellcheck disable=SC2016
    from=$(apt-get indextargets --format '$(RELEASE) $(COMPONENT) $(REPO_URI)' "Created-By: Packages" |
        awk -v suite=$suite '$1 == suite && $2 == "main" { print $3; exit }')
    rm -rf "$store/system.new"
    debootstrap --variant=minbase "$suite" "$store/system.new" "$from" >"$store/log" 2>&1
    rm -f "$store/system.new/var/cache/apt/archives/"*.deb "$store/system.new/etc/resolv.conf"
    mv -T "$store/system.new" "$store/system"
}

# This machine's apt chooses and downloads what the package needs beyond that system, which gets it as its one source.
fill_store() {
    local packages=$store/system/var/local/packages
    rm -rf "$packages"
    mkdir -p "$packages/partial"
    apt-get -q update
    apt-get -q -y --no-install-recommends --download-only -o Dir::State::status="$store/system/var/lib/dpkg/status" \
        -o Dir::Cache::archives="$packages" -o Debug::NoLocking=true -o APT::Sandbox::User=root install "$package"
    rm -rf "$packages/partial" "$packages/lock"
    (cd "$packages" && dpkg-scanpackages --multiversion . >Packages)
    echo "deb [trusted=yes] file:/var/local/packages ./" >"$store/system/etc/apt/sources.list"
    chroot "$store/system" apt-get -q update
}

mkdir -p "$store"
trap 'tail -n 20 "$store/log"; echo "clean-system: no package, or no system to install it on"' EXIT
package=$(ls "$build"/korvan_*.deb)
exec 9>"$store/lock"
flock 9
[ -d "$store/system" ] || make_system
depends=$(dpkg-deb -f "$package" Depends)
if [ "$(cat "$store/depends" 2>/dev/null)" != "$depends" ]; then
    fill_store >"$store/log" 2>&1
    echo "$depends" >"$store/depends"
fi
exec "$source/lab/lab" run --build "$build" -- "$here/life.sh" "$store/system" "$package" "$build"
