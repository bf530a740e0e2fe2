#!/usr/bin/env bash
# One life of the package: installed, started by an ordinary user, connected, upgraded, crashed in lock-down, removed,
# installed again, purged while connected. Runs on the subscriber's machine of a lab: life.sh SYSTEM PACKAGE BUILD.
# SYSTEM is the root folder of a Debian, which stays as it is: all changes go to a layer above it.
# shellcheck disable=SC2015,SC1091,SC2154
set -euo pipefail
system=$1 package=$2 build=$3
root=/run/system
. "$build/names/names.sh"
application=$packaged_bundle/Contents/MacOS
log=$root$application/log.txt
export LC_ALL=C.UTF-8

fail() {
    echo "life: FAILED: $*"
    tail -n 20 "$log" 2>/dev/null || true
    exit 1
}

# await COMMAND...: waits until the command succeeds.
await() {
    local limit=$((SECONDS + 60))
    until "$@" >/dev/null 2>&1; do
        [ "$SECONDS" -lt "$limit" ] || fail "not in time: $*"
        sleep 0.1
    done
}

# inside COMMAND...: as root in that system, with nothing of this environment but the screen.
enter=(chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8
    DEBIAN_FRONTEND=noninteractive)
inside() { "${enter[@]}" DISPLAY="$DISPLAY" "$@"; }

# quietly COMMAND...: as root in that system; tells what it prints when it fails.
quietly() { inside "$@" >/run/quiet.log 2>&1 || { cat /run/quiet.log; fail "$*"; }; }

install() { quietly apt-get install -q -y --no-install-recommends --reinstall /root/korvan.deb; }

# All that must be as before when the package is gone.
state() {
    ip -4 rule
    ip -6 rule
    ip -4 route show table all
    ip -6 route show table all | grep -v ' table local ' # which the kernel may still be filling
    ip -brief link | grep -v '^\(lo\|eth0\)' || true
    nft list ruleset
    stat -c '%N %a %U' "$root"/etc/resolv.conf*
    cat "$root/etc/resolv.conf"
    ls -A "$root$journal_folder" 2>/dev/null || true
    cat /proc/sys/net/ipv4/conf/*/src_valid_mark
    processes
}
expect_state() {
    diff -u /run/state.before <(state) || fail "$1: the machine is not as it was"
}

# The country that the IP test page sees.
country() { curl -s -m 10 http://ip.korvan.example/testip.php | sed -n 's/.*in \(.*\)? .*/\1/p'; }
in_tunnel() { [ "$(country)" = Examplia ]; }

# processes [PROGRAM]: those of that system.
processes() {
    local exe
    for exe in /proc/[0-9]*/exe; do
        [[ $(readlink "$exe") != "$root${1:-/}"* ]] || basename "$(dirname "$exe")"
    done
}

# as_ada COMMAND...: with her rights.
as_ada() { inside setpriv --reuid=ada --regid=ada --init-groups env HOME=/home/ada USER=ada "$@"; }

# start COMMAND...: by that command, with a window; it connects by itself.
start() {
    "$@" korvan >/dev/null 2>&1 &
    await xdotool search --onlyvisible --name '^Korvan$'
    await in_tunnel
}

login_items() { grep -ho '^Exec="/[a-z]*' "$root"/home/ada/.config/autostart/* | sort | paste -sd ' '; }

# crash_in_lock_down SIGNAL: everything at its worst. Lock-down has taken the default route, then Korvan is killed with its
# broker and its guardian, and OpenVPN with them or left hanging.
crash_in_lock_down() {
    local program korvan=()
    printf 198.51.100.1 >"$root$application/defgate"
    inside "$application/tools/route" delete 0.0.0.0 mask 0.0.0.0 198.51.100.1 >/dev/null
    for program in Korvan broker network; do
        mapfile -t -O "${#korvan[@]}" korvan < <(processes "$application/$program")
    done
    kill -STOP "${korvan[@]}"
    # shellcheck disable=SC2046
    kill "-$1" $(processes /usr/sbin/openvpn)
    kill -KILL "${korvan[@]}"
    [ -z "$(ip route show default | grep -v ' dev tun')" ] || fail "lock-down has left a default route: $(ip route)"
}

# The system, with what the lab needs of this machine and no init that could start services.
mkdir -p "$root" /run/changes /run/work
mount -t overlay -o "lowerdir=$system,upperdir=/run/changes,workdir=/run/work,volatile" overlay "$root"
mount -t proc proc "$root/proc"
mount -t sysfs sysfs "$root/sys"
mount --rbind /dev "$root/dev"
mount -t tmpfs tmpfs "$root/run"
mount -t tmpfs tmpfs "$root/tmp"
mkdir "$root/tmp/.X11-unix"
mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix"
cp --remove-destination /etc/hosts /etc/resolv.conf "$root/etc/"
printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
chmod 755 "$root/usr/sbin/policy-rc.d"
cp "$package" "$root/root/korvan.deb"

state >/run/state.before

install
# Of two bundles, which ada starts at her login, only the package's own goes with it.
inside useradd -m ada
as_ada "$application/tools/defaults" write loginwindow \
    AutoLaunchedApplicationDictionary \
    '({Hide = 0; Path = "'"$packaged_bundle"'";},{Hide = 0; Path = "/home/ada/Korvan.app";})'
[ "$(login_items)" = 'Exec="/home Exec="/usr' ] || fail "no login items: $(login_items)"

# The bus and polkit, as on a desktop. There is no seat here whose active user polkit could see, so that a rule has to
# say that ada is one.
mkdir -p "$root/run/dbus"
"${enter[@]}" dbus-daemon --system --nofork --nopidfile >/dev/null 2>&1 &
bus=$!
await test -S "$root/run/dbus/system_bus_socket"
echo 'polkit.addRule(function (action, subject) { return action.id == "example.korvan.start" &&
    subject.user == "ada" ? polkit.Result.YES : null; });' >"$root/etc/polkit-1/rules.d/10-ada.rules"
"${enter[@]}" /usr/lib/polkit-1/polkitd --no-debug >/dev/null 2>&1 &
polkit=$!
await inside dbus-send --system --print-reply --dest=org.freedesktop.DBus / \
    org.freedesktop.DBus.GetNameOwner string:org.freedesktop.PolicyKit1

# A name and a password that the service knows, and "connect automatically after start".
cp "$build/demo/prepare_state" "$root$application/"
for way in inside as_ada; do # root's is the bundle's own
    $way "$application/prepare_state" alice wonderland-7 Examplia-1
done
rm "$root$application/prepare_state"
log=$root/home/ada/.local/share/korvan/log.txt
start as_ada
for program in Korvan:ada broker:root; do
    [ "$(ps -o uid= -p "$(processes "$application/${program%:*}" | paste -sd ,)" | tr -d ' ')" = \
        "$(inside id -u "${program#*:}")" ] || fail "${program%:*} is not ${program#*:}'s"
done
kill "$polkit" "$bus"
wait "$polkit" "$bus" || true

# Upgraded while connected.
running=$(processes "$application/Korvan")
install
[ -s "$root$application/cfg/login" ] || fail "the upgrade has lost the login"
[ "$running" = "$(processes "$application/Korvan")" ] && in_tunnel || fail "the upgrade has ended the connection"

# Removed after a crash in lock-down: the login is kept.
cp "$root$application/compose9" "$root$application/compose10" # as of a newer version that an update has installed
crash_in_lock_down STOP
quietly dpkg -r korvan
expect_state "removed after a crash"
[ "$(login_items)" = 'Exec="/home' ] || fail "login items: $(login_items)"
[ -s "$root$application/cfg/login" ] || fail "removing has lost the login"
[ -z "$(find "$root$packaged_folder" -type f -perm /111)" ] || fail "programs are left in /opt"

# Installed again, with the login that was kept, and repaired after a crash, without a screen.
install
log=$root$application/log.txt
start inside
crash_in_lock_down KILL
quietly env -u DISPLAY korvan -reset
[ "$(country)" = Homeland ] || fail "korvan -reset does not repair the network"
start inside

# Purged while connected.
quietly dpkg -P korvan
expect_state "purged while connected"
[ ! -e "$root$packaged_folder" ] || fail "purging leaves $(find "$root$packaged_folder")"
