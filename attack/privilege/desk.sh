# shellcheck shell=bash
# The desktop of the attacks, and what their rows are made of. Sourced by privilege.sh.
# shellcheck disable=SC2015,SC2016,SC2034,SC2046,SC2086,SC2154,SC2206

here=$LAB_DIR/attack
gained=$here/gained
secret=$here/secret
application=/opt/korvan/Korvan.app/Contents/MacOS
ada=$LAB_DIR/people/ada
ben=$LAB_DIR/people/ben
total=0 unproven=0 outlived=0

# A screen of this lab's alone: a server in another network does not see which numbers are taken, and would take the
# socket of somebody else's.
mkdir -p /tmp/.X11-unix
mount -t tmpfs -o mode=1777 screens /tmp/.X11-unix
exec {number}< <(exec Xvfb -noreset -displayfd 1 -screen 0 1280x800x24 -nolisten tcp 2>/dev/null)
read -r -t 30 display <&"$number" || exit 1
export DISPLAY=:$display
"$LAB" desktop "$folder" || exit 1
install -d -m 0755 "$here" "$here/bin" "$here/proxy"
install -d -m 0777 "$gained"
install -d -m 0700 "$here/hidden"
cp "$LAB_BUILD/demo/prepare_state" "$LAB_BUILD/tests/privilege_victim/privilege_victim" "$attack"/privilege/*.py "$here/"
cc -DGAINED="\"$gained\"" -o "$here/hostile" "$attack/privilege/hostile.c"
cc -DGAINED="\"$gained\"" -shared -fPIC -o "$here/hostile.so" "$attack/privilege/hostile.c"
for name in bash sh env ip nft id netstat route ping openvpn dbus-launch xdg-open openssl; do cp "$here/hostile" "$here/bin/$name"; done
printf 'openssl_conf = a\n[a]\nengines = b\n[b]\nc = d\n[d]\ndynamic_path = %s\ninit = 0\n' "$here/hostile.so" >"$here/openssl.cnf"
printf 'hook_func.hostile { lib "%s" func hostile }\n@hooks [ { func hostile } ]\n' "$here/hostile.so" >"$here/asoundrc"
keep_secret() { (umask 077; { echo "Not After : SECRET GMT of root"; printf '%0300d' 0; } | tee "$secret" "$here/hidden/temp" >"$here/kept"); }
keep_secret
pristine=$LAB_DIR/pristine
cp -a /opt/korvan "$pristine"

as_root() { find "$gained" -name '0-*' | wc -l; }
overwritten() { cmp -s "$secret" "$here/kept" && echo 0 || { keep_secret; echo 1; }; }
program() { pgrep -f "^$application/(broker|Korvan)"; }
root_part() { pgrep -u root -f "^$application/(broker|Korvan)"; }
gone() { ! root_part && ! pgrep -f '^/usr/sbin/openvpn .*--askpass' && ! pgrep -f "$application/network watch"; } >/dev/null
await() {
    local limit=$((SECONDS + ${patience:-30}))
    until "$@" >/dev/null 2>&1; do [ "$SECONDS" -lt "$limit" ] || return 1; sleep 0.05; done
}
# row TRIES CONTROL GAINED WHAT
row() {
    printf '%6s %8s %7s  %s\n' "$@"
    total=$((total + $3))
    [ "$2" -gt 0 ] || { echo "                         (not proven: the control gained nothing)"; unproven=1; }
}

# Before the window gave up root everybody's state was root's; then root writes what a person would click.
[ -x $application/broker ] && own=true state=$ada/.local/share/korvan || own=false state=$application
prepare() { # USER PASSWORD SERVER [lock-down | PROXY:PORT]
    $own && { "$LAB" as ada "$here/prepare_state" "$@"; return; }
    cp "$here/prepare_state" $application/
    $application/prepare_state "$@"
    rm $application/prepare_state
}

# Notes what was started last. Its end is no news.
begun() { started=$!; disown; }
log_of() { $own && echo "$LAB_DIR/people/$1/.local/share/korvan/log.txt" || echo $application/log.txt; }
logged() { grep -qs "$1" "$(log_of "${2:-ada}")"; }
# run PROGRAM...: Korvan, or something else, as ada until its window's start is over, or it is dead.
run() {
    rm -f "$(log_of ada)"
    "$LAB" as ada "$@" >/dev/null 2>&1 & begun
    await_window
}
await_window() { await eval 'logged "Default Gateway" || ! kill -0 $started'; sleep 0.2; }
ways=(korvan $application/Korvan)
# Makes the program file ready for the start by this way.
allow() { [ "$1" = korvan ] && chmod 0755 $application/Korvan || chmod 4755 $application/Korvan; }
end() {
    kill -KILL $started $($own || program) 2>/dev/null
    await gone || { echo "   still there: $(ps -o pid=,user=,stat=,wchan=,args= -p "$(pgrep -d, -f "$application/")" | paste -sd '|')"; outlived=$((outlived + 1)); }
    kill -KILL $(program) 2>/dev/null
    kill -KILL $(pgrep -u root -x dbus-launch) $(pgrep -u root -f '^/usr/bin/dbus-daemon --syntax') 2>/dev/null
}
both_ways() { local way; for way in "${ways[@]}"; do allow "$way"; run "$way"; end; done; allow korvan; }
clean() { find "$gained" -mindepth 1 -delete; }
# taken [MORE]: what has been gained so far, forgotten by that.
taken() { local count; count=$(($(as_root) + $(overwritten) + ${1:-0})); clean; echo $count; }
# The victim in ada's session, with what follows in its environment.
victim() {
    env -i DISPLAY="$DISPLAY" HOME="$ada" PATH=/usr/bin:/bin "$@" timeout 30 "$here/privilege_victim" >/dev/null 2>&1
    kill -KILL $(pgrep -u root -x dbus-launch) $(pgrep -u root -f '^/usr/bin/dbus-daemon --syntax') 2>/dev/null
}
