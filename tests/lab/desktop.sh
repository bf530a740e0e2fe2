#!/usr/bin/env bash
# The window as an ordinary person's own process, in that person's session: desktop.sh BUILD, on a screen, in a lab. Two
# people, one for each start that is not root's, use it by ear from the sign-in to the end; a third one may not, and reads
# so in her language.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
application=/opt/korvan/Korvan.app/Contents/MacOS
failed=0 none=0000000000000000

# is WHAT EXPECTED COMMAND...: the command comes to print this within half a minute.
is() {
    local limit=$((SECONDS + 30)) said
    while said=$("${@:3}" 2>&1 || true); [ "$said" != "$2" ]; do
        [ "$SECONDS" -lt "$limit" ] || { echo "FAIL!  : $person: $1: \"$said\" in place of \"$2\""; failed=1; return 0; }
        sleep 0.1
    done
}

# Users, groups and capabilities of the one process of a program of the bundle.
rights() { sed -nE 's/^(Uid|Gid|Groups|CapPrm|CapEff)://p' "/proc/$(pgrep -f "^$application/$1")/status" | xargs; }
# What root has loaded that speaks to a screen, a sound server or the network.
foreign_libraries() {
    local process
    for process in $(pgrep -u root -f "^$application/"); do
        grep -oE 'lib(Qt5|X11|xcb|wayland|pulse|asound|ssl|gnutls|curl|http)[^/]*$' "/proc/$process/maps" | sort -u
    done
}
by_ear() { "$LAB" as "$person" "$LAB_DIR/screen_reader.py" "$@" || { echo "FAIL!  : $person: $1"; failed=1; }; }
country() { curl -s -m 2 http://ip.korvan.example/testip.php | grep -oE '(Examplia|Homeland)\b' | head -n 1; }
# ask PATH INTERFACE.METHOD ARGUMENT...: how many of its lines hold $word.
ask() {
    "$LAB" as "$person" dbus-send --session --print-reply "--dest=$icon" "$@" | grep -cF "$word"
}
sounds() { [ "$(tr -d '\0' <"$home/heard" | wc -c)" -gt "$1" ] && echo heard; }
# A click on the icon, and the windows that are shown then. One that comes while the window is still on its way down is
# for nothing, as a person's would be.
click_icon() {
    word='' ask /StatusNotifierItem org.kde.StatusNotifierItem.Activate int32:0 int32:0 >/dev/null || true
    sleep 0.3
    windows
}
windows() { xdotool search --onlyvisible --name '^Korvan$' 2>/dev/null | wc -l; }

"$LAB" desktop "$1"
cp "$here/screen_reader.py" "$LAB_DIR/"
for pair in ada:installed ben:set-user-id; do
    person=${pair%:*} home=$LAB_DIR/people/${pair%:*}
    own=$(id -u "$person") && own="$own $own $own $own"
    "$LAB" session "$person"
    "$LAB" start "${pair#*:}" "$person" >"$LAB_DIR/$person.log" 2>&1 &
    korvan=$!
    by_ear connect alice wonderland-7 Examplia-1
    is "way into the world" Examplia country
    is "the window's rights" "$own $own $(id -u "$person") $none $none" rights Korvan
    is "root's part" 0 eval 'rights broker | cut -c 1'
    is "libraries of root's" "" foreign_libraries
    is "sound of the connection" heard sounds 10000
    read -r _ icon _ <"$home/shown"
    word=Examplia-1 is "tool tip" 1 ask /StatusNotifierItem org.freedesktop.DBus.Properties.Get \
        string:org.kde.StatusNotifierItem string:ToolTip
    word='"Disconnect"' is "tray menu" 1 ask /MenuBar com.canonical.dbusmenu.GetLayout int32:0 int32:-1 array:string:
    by_ear press Minimize
    is "window put away" 0 windows
    is "window behind the tray icon" 1 click_icon
    by_ear disconnect
    is "way into the world" Homeland country
    is "notifications" "notification Korvan: Connected to server Examplia-1
notification Korvan: Disconnected from server Examplia-1" grep -E 'Connected|Disconnected' "$home/shown"
    is "page in the browser" http://www.korvan.example/faqs.php cat "$home/opened"
    kill "$korvan"
    wait "$korvan" || true
done

person=cleo state=$LAB_DIR/people/cleo/.local/share/korvan
"$LAB" session cleo
"$LAB" as cleo sh -c "mkdir -p '$state/cfg' && printf de >'$state/cfg/language'"
"$LAB" start installed cleo >"$LAB_DIR/cleo.log" 2>&1 &
korvan=$!
by_ear answer "Absicherung fehlgeschlagen, Korvan muss mindestens einmal als root gestartet werden" OK
is "log" 1 grep -m 1 -c "\[ERROR\]Secure failed, you must run me as root at least one time" "$state/log.txt"
by_ear press "Anmelden"
kill "$korvan"
wait "$korvan" || true
exit $failed
