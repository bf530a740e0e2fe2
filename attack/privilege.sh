#!/usr/bin/env bash
# What an ordinary user tries to get root's rights by way of Korvan, or somebody else's secrets, on a desktop of the lab:
# privilege.sh [FOLDER], a build or an unpacked package, build/debug unless given. MOMENTS: how often the window or its
# root part is killed, 50 unless given.
# shellcheck disable=SC2015,SC2154
set -uo pipefail
root=$(realpath "$(dirname "$(realpath "$0")")/..")
folder=$(realpath "${1:-$root/build/debug}")
[ -n "${LAB_DIR:-}" ] || exec "$root/lab/lab" run -- bash "$(realpath "$0")" "$folder"
here=$LAB_DIR/attack
gained=$here/gained
application=/opt/korvan/Korvan.app/Contents/MacOS
ada=$LAB_DIR/people/ada
state=$ada/.local/share/korvan
total=0

exec {number}< <(exec Xvfb -noreset -displayfd 1 -screen 0 1280x800x24 -nolisten tcp 2>/dev/null)
read -r -t 30 display <&"$number" || exit 1
export DISPLAY=:$display
"$LAB" desktop "$folder" || exit 1
install -d -m 0755 "$here"
install -d -m 0777 "$gained"
cp "$LAB_BUILD/demo/prepare_state" "$here/"
(umask 077; echo "SECRET of root" >"$here/secret")

# A library, and a program, that note with whose rights they run.
cat >"$here/hostile.c" <<END
#include <stdio.h>
#include <unistd.h>
__attribute__((constructor)) static void note(void)
{
    char path[200];
    snprintf(path, sizeof path, "$gained/%d-%d", geteuid(), getpid());
    FILE *file = fopen(path, "w");
    if (file) fclose(file);
}
END
cc -shared -fPIC -o "$here/hostile.so" "$here/hostile.c"
printf '#!/bin/sh\n: >%s/$(id -u)-$$\n' "$gained" >"$here/hostile"
chmod 755 "$here/hostile" "$here/hostile.so"

as_root() { find "$gained" -name '0-*' | wc -l; }
root_part() { pgrep -u root -f "^$application/(broker|Korvan)"; }
gone() { ! pgrep -f "^$application/(broker|Korvan)" >/dev/null && ! pgrep -f '^/usr/sbin/openvpn --verb 3 --askpass' >/dev/null; }
await() {
    local limit=$((SECONDS + 30))
    until "$@" >/dev/null 2>&1; do [ "$SECONDS" -lt "$limit" ] || return 1; sleep 0.05; done
}
# row TRIES GAINED WHAT
row() { printf '%6s tries %4s gained  %s\n' "$1" "$2" "$3"; total=$((total + $2)); }

# run WAY [PERSON]: Korvan until its window's start is over, or dead.
run() {
    local turn
    local log=$LAB_DIR/people/${2:-ada}/.local/share/korvan/log.txt
    rm -f "$log"
    "$LAB" start "$1" "${2:-ada}" >/dev/null 2>&1 &
    started=$!
    for ((turn = 0; turn < 60; turn++)); do
        grep -q 'Default Gateway' "$log" 2>/dev/null || grep -q 'Default Gateway' $application/log.txt 2>/dev/null || ! kill -0 $started 2>/dev/null || { sleep 0.05; continue; }
        break
    done
    sleep 0.2
}
end() { kill -KILL $started 2>/dev/null; wait $started 2>/dev/null; await gone; rm -f "$application/log.txt"; }
clean() { find "$gained" -mindepth 1 -delete; }

# The traps do work, on a program that is not on its guard.
LD_PRELOAD=$here/hostile.so /bin/true
[ "$(as_root)" -gt 0 ] && clean || { echo "attack: the trap does not work"; exit 1; }

# Variables that load code, name folders of code, or name files to read or write.
tries=0
for variable in LD_PRELOAD LD_LIBRARY_PATH LD_AUDIT GCONV_PATH QT_PLUGIN_PATH QT_QPA_PLATFORM_PLUGIN_PATH QT_QPA_GENERIC_PLUGINS \
    QT_QPA_PLATFORMTHEME QT_STYLE_OVERRIDE QT_LOGGING_CONF QT_IM_MODULE QT_ACCESSIBILITY OPENSSL_CONF OPENSSL_ENGINES \
    OPENSSL_MODULES SSL_CERT_FILE XDG_CONFIG_HOME XDG_CONFIG_DIRS XDG_DATA_DIRS XDG_RUNTIME_DIR XDG_CACHE_HOME PATH HOME TZ LANG \
    LOCPATH NLSPATH TMPDIR DBUS_SESSION_BUS_ADDRESS DBUS_SYSTEM_BUS_ADDRESS AT_SPI_BUS_ADDRESS XAUTHORITY PULSE_SERVER \
    PULSE_CONFIG_PATH PULSE_COOKIE ALSA_CONFIG_PATH BASH_ENV ENV SHELLOPTS PKEXEC_UID KORVAN_PERSON SUDO_UID; do
    for way in installed set-user-id; do
        case $variable in
            LD_PRELOAD | LD_AUDIT | BASH_ENV | ENV) value=$here/hostile.so ;;
            *BUS_ADDRESS) value=unixexec:path=$here/hostile ;;
            *_UID | KORVAN_PERSON) value=0 ;;
            PATH) value=$here:/usr/bin:/bin ;;
            *) value=$here ;;
        esac
        export PERSON_VARIABLES=$variable ; saved=${!variable:-}
        if [ "$variable" = PATH ] || [ "$variable" = HOME ]; then
            "$LAB" as ada env "$variable=$value" $([ $way = installed ] && echo /usr/bin/korvan || echo $application/Korvan) >/dev/null 2>&1 &
            started=$!; sleep 0.6
        else
            "$LAB" as ada env "$variable=$value" $([ $way = installed ] && echo /usr/bin/korvan || { chmod 4755 $application/Korvan; echo $application/Korvan; }) >/dev/null 2>&1 &
            started=$!; sleep 0.4
        fi
        end; chmod 0755 $application/Korvan
        tries=$((tries + 1))
    done
done
row $tries "$(as_root)" "environment variables, one at a time, run code as root"
clean

# Settings below HOME that name a library or are links.
tries=0 overwritten=0
for way in installed set-user-id; do
    "$LAB" as ada bash -c "echo 'pcm.!default { type hostile lib $here/hostile.so }
pcm_type.hostile { lib $here/hostile.so }
ctl.!default { type hostile }' >~/.asoundrc; mkdir -p ~/.config/pulse ~/.dbus/session-bus
        ln -sf $here/secret ~/.config/pulse/cookie; ln -sf $here/secret ~/.dbus/session-bus/\$(cat /etc/machine-id 2>/dev/null)-0"
    run $way; end; tries=$((tries + 1))
done
[ "$(cat "$here/secret")" = "SECRET of root" ] || overwritten=1
row $tries $(($(as_root) + overwritten)) "library in ~/.asoundrc, links for the sound cookie and the bus"
clean

# What any program writes to the screen.
tries=0
for way in installed set-user-id; do
    xprop -root -f AT_SPI_BUS 8s -set AT_SPI_BUS "unixexec:path=$here/hostile"
    run $way; end; tries=$((tries + 1))
done
xprop -root -remove AT_SPI_BUS
row $tries "$(as_root)" "bus address on the screen that names a program"
clean

# A set-user-id bundle where its user can swap what is in it.
"$LAB" as ada mkdir -p "$ada/own"
cp -a /opt/korvan/Korvan.app "$ada/own/"
chmod 4755 "$ada/own/Korvan.app/Contents/MacOS/Korvan"
mv "$ada/own/Korvan.app/Contents/MacOS/tools" "$ada/own/tools.before"
"$LAB" as ada bash -c "cd '$ada/own'; mv Korvan.app mine; cp -r mine Korvan.app; :" 2>/dev/null
mkdir -p "$ada/own/mine/Contents/MacOS/tools"; cp "$here/hostile" "$ada/own/mine/Contents/MacOS/tools/netstat"
"$LAB" as ada "$ada/own/mine/Contents/MacOS/Korvan" >/dev/null 2>&1 & started=$!
sleep 1; end
row 1 "$(as_root)" "set-user-id bundle in the user's own folder"
clean

# Links and fifos in place of every state file.
tries=0 bad=0
for file in cfg cfg/option cfg/login cfg/update cfg/transfer cfg/proxy cfg/L2TP.txt cfg/OpenVPN cfg/OpenVPN/temp l2tp defgate \
    log.txt log update update/update.zip instance vpnlog.txt; do
    for kind in link fifo; do
        rm -rf "$state"
        "$LAB" as ada bash -c "mkdir -p '$state/$(dirname $file)'; [ $kind = link ] && ln -s '$here/secret' '$state/$file' || mkfifo '$state/$file'"
        run installed
        end
        [ "$(cat "$here/secret")" = "SECRET of root" ] && ! grep -rqs SECRET "$state" --include=log.txt || bad=$((bad + 1))
        tries=$((tries + 1))
    done
done
rm -rf "$state"
row $tries $bad "link to root's file, or fifo, for each state file"

# A second person.
"$LAB" as ada "$here/prepare_state" alice wonderland-7 Examplia-1 lock-down
run installed
await root_part
parts=$(root_part | paste -sd ' ')
run_ben() { "$LAB" as ben "$@" >/dev/null 2>&1; }
got=0 tries=0
for part in $parts; do
    for attempt in "kill -9 $part" "kill -STOP $part" "cat /proc/$part/environ" "ls /proc/$part/fd/" "cat $state/cfg/login" "ls $state"; do
        tries=$((tries + 1)); ! run_ben $attempt || got=$((got + 1))
    done
    for attempt in "kill -9 $part" "kill -STOP $part" "ls /proc/$part/fd/" "strace -o /dev/null -p $part"; do
        tries=$((tries + 1)); ! timeout 2 "$LAB" as ada $attempt >/dev/null 2>&1 || got=$((got + 1))
    done
done
first=$started
rm -f "$LAB_DIR/people/ben/.local/share/korvan/log.txt"
run installed ben
log=$LAB_DIR/people/ben/.local/share/korvan/log.txt
tries=$((tries + 2))
grep -q 'ada is using Korvan' "$log" || { got=$((got + 1)); echo "   ben is not told who has the tunnel"; }
! grep -q 'SUCCESS: download .* profile' "$log" || { got=$((got + 1)); echo "   ben is signed in as somebody else"; }
kill -KILL $started; wait $started 2>/dev/null
[ "$(root_part | paste -sd ' ')" = "$parts" ] || got=$((got + 1))
started=$first; end
row $tries $got "second person, and the window's own: signals, descriptors, login, tunnel"

# What a hostile window sends.
if [ -x "$LAB_BUILD/tests/broker_test/broker_test" ]; then
    (cd "$LAB_BUILD/tests/broker_test" && ./broker_test garbageStartsNothing servesOneWindowOfItsOwnUser >/dev/null 2>&1)
    row 10006 $(($? > 0)) "random requests, somebody else's window"
fi

# Killed and stopped at any moment, in lock-down, while the profile is swapped.
"$LAB" as ada bash -c "cd '$state/cfg/OpenVPN' 2>/dev/null; while :; do ln -sf '$here/secret' swap; mv -f swap ca.new; cp ca.crt keep 2>/dev/null; mv -f ca.new temp; sleep 0.01; rm -f temp; cp keep ca.crt 2>/dev/null; sleep 0.2; done" >/dev/null 2>&1 &
swapper=$!
left=0
for ((moment = 0; moment < ${MOMENTS:-50}; moment++)); do
    "$LAB" start installed ada >/dev/null 2>&1 & started=$!
    sleep "0.$((RANDOM % 10))"; [ $((moment % 3)) -eq 0 ] || sleep "0.$((RANDOM % 10))"
    case $((moment % 4)) in
        0) kill -KILL $started ;;
        1) pkill -KILL -u root -f "^$application/broker" ;;
        2) kill -STOP $started; sleep 0.1; kill -KILL $started ;;
        3) kill -TERM $started; sleep 0.05; pkill -KILL -u root -f "^$application/broker" ;;
    esac
    sleep 0.1
    kill -KILL $started 2>/dev/null; wait $started 2>/dev/null
    await gone
    await eval 'ip route show default | grep -q .' || { left=$((left + 1)); echo "   no default route at moment $moment: $(ip route | paste -sd '|')"; }
done
kill $swapper 2>/dev/null
row "${MOMENTS:-50}" $left "kill and stop of window and root part: a machine without its network"
row "${MOMENTS:-50}" "$(grep -rlsa SECRET "$state" "$LAB_DIR/people/ben" --include='*.txt' | wc -l)" "a root-only file in the log, the profile swapped"
row 1 "$(for pid in $(pgrep -u root -f "^$application"); do cat /proc/$pid/maps; done 2>/dev/null | grep -cE 'libQt|libX|libxcb|libpulse|libssl')" "libraries of the window in root's processes"
[ $total -eq 0 ]
