#!/usr/bin/env bash
# The package's life (life.sh) on a clean Debian of the release that this machine has, for which the package was built:
# clean-system.sh BUILD, whose package is used. The system and the packages that Korvan depends on come from where this
# machine gets its own, and are kept in build/debootstrap, so that a second run needs no network.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
source=$(realpath "$here/../..")
build=$(realpath "$1")
store=$source/build/debootstrap
# shellcheck source=/dev/null
release=$(. /etc/os-release && echo "$VERSION_CODENAME")

# shellcheck disable=SC2015
[ "$(id -u)" -eq 0 ] && [ -c /dev/net/tun ] || { echo "SKIPPED WHOLE TEST: it needs root and /dev/net/tun"; exit 0; }

# The system comes from where this machine gets that suite. This machine's apt chooses and downloads what the package
# needs beyond it, which becomes the system's one source.
make_system() {
    local from packages=$store/system/var/local/packages
    # shellcheck disable=SC2016
    from=$(apt-get indextargets --format '$(RELEASE) $(COMPONENT) $(REPO_URI)' "Created-By: Packages" |
        awk -v release="$release" '$1 == release && $2 == "main" { print $3; exit }')
    rm -rf "$store/depends" "$store/system"
    debootstrap --variant=minbase "$release" "$store/system" "$from"
    rm -f "$store/system/var/cache/apt/archives/"*.deb "$store/system/etc/resolv.conf"
    mkdir -p "$packages/partial"
    apt-get -q update
    apt-get -q -y --no-install-recommends --download-only -o Dir::State::status="$store/system/var/lib/dpkg/status" \
        -o Dir::Cache::archives="$packages" -o Debug::NoLocking=true -o APT::Sandbox::User=root install "$package"
    rm -rf "$packages/partial" "$packages/lock"
    (cd "$packages" && dpkg-scanpackages --multiversion . >Packages)
    echo "deb [trusted=yes] file:/var/local/packages ./" >"$store/system/etc/apt/sources.list"
    chroot "$store/system" apt-get -q update
    echo "$depends" >"$store/depends"
}

mkdir -p "$store"
trap 'tail -n 20 "$store/log"; echo "clean-system: no package, or no system to install it on"' EXIT
package=$(ls "$build"/korvan_*.deb)
exec 9>"$store/lock"
flock 9
depends=$(dpkg-deb -f "$package" Depends)
[ "$(cat "$store/depends" 2>/dev/null)" = "$depends" ] || make_system >"$store/log" 2>&1
# The screen is the machine's, because the lab shares /tmp.
exec "$source/scripts/with-screen.sh" "$source/lab/lab" run --build "$build" -- \
    "$here/life.sh" "$store/system" "$package" "$build"
