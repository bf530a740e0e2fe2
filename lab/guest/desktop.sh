# shellcheck shell=bash disable=SC2016,SC2034,SC2154
# What the cases do on the guest's desktop, and what they look at. Sourced after machine.sh. A case ends with the first
# expectation that is not met; $told is what the person was told last.

application=/opt/korvan/Korvan.app/Contents/MacOS
state=/home/ada/.local/share/korvan
log=$state/log.txt

# Limits are for a machine that has a core to itself; where others share it, it may take so many times as long.
patience=3

case_fail() {
    echo "FAILED: $*" >&2
    guest_do root "tail -n 40 $log; cat /tmp/korvan.out; ip route; ip rule; resolvectl status --no-pager | head -n 40; journalctl --no-pager -n 40" >&2 || true
    exit 1
}

# eventually SECONDS PERSON COMMAND: waits until the command succeeds in the guest.
eventually() {
    local limit=$((SECONDS + $1 * patience))
    until guest_do "$2" "$3" >/dev/null; do
        [ "$SECONDS" -lt "$limit" ] || case_fail "not in $1 s: $3"
        sleep 0.5
    done
}

# Looks at the window. $told is all that it has said in this case about the connection, in its own words.
look() {
    local says
    guest_monitor "screendump $guest_run/screen.ppm"
    says=$(convert "$guest_run/screen.ppm" -crop 500x52+218+354 +repage -resize 200% png:- |
        OMP_THREAD_LIMIT=1 tesseract - - --psm 6 2>/dev/null | tr '[:upper:]\n' '[:lower:] ')
    case $says in # the small words under the large ones come first
        *reconnecting*) says=reconnecting ;;
        *disconnecting*) says=disconnecting ;;
        *connecting*) says=connecting ;;
        *"has failed"*) says="the connection has failed" ;;
        *"not connected"*) says="not connected" ;;
        *connected*) says=connected ;;
        *) return ;; # another page, or a box
    esac
    [ "${told##*, }" = "$says" ] || told+=${told:+, }$says
}
# await_word WORD [SECONDS]: until the window says that.
await_word() {
    local limit=$((SECONDS + ${2:-100} * patience))
    until look; [ "${told##*, }" = "$1" ]; do
        [ "$SECONDS" -lt "$limit" ] || case_fail "the window does not say \"$1\" but: $told"
        sleep 0.5
    done
}
# Until the window says that the connection is lost, and then that it is there again.
await_return() {
    await_lost
    await_word connected
}
await_lost() {
    local limit=$((SECONDS + 100 * patience))
    while look; [ "${told##*, }" = connected ]; do
        [ "$SECONDS" -lt "$limit" ] || case_fail "the window still says \"connected\""
        sleep 0.5
    done
}

# All that the screen says, read twice: small words only come out where they are black on white, pale ones only otherwise.
read_screen() {
    local how
    guest_monitor "screendump $guest_run/screen.ppm"
    for how in '-threshold 60%' ''; do
        # shellcheck disable=SC2086
        convert "$guest_run/screen.ppm" -resize 200% $how png:- | OMP_THREAD_LIMIT=1 tesseract - - --psm 11 2>/dev/null | tr '\n' ' '
    done
}
# await_text TEXT: until that stands anywhere on the screen, whoever sits before it.
await_text() {
    local limit=$((SECONDS + 100 * patience)) says
    until says=$(read_screen); [[ $says == *"$1"* ]]; do
        [ "$SECONDS" -lt "$limit" ] || case_fail "the screen says: $says"
    done
}

# The country in which the IP test page sees the guest.
country() {
    guest_do ada 'curl -s -m 30 http://ip.korvan.example/testip.php' | sed -n 's/.*in \(.*\)? .*/\1/p'
}
await_country() {
    local limit=$((SECONDS + ${2:-100} * patience))
    until [ "$(country)" = "$1" ]; do
        [ "$SECONDS" -lt "$limit" ] || case_fail "the guest is not in $1"
        look
        sleep 0.5
    done
}

# sign_in [lock-down]: what ada has told Korvan in an earlier life: her name and password, the server, to connect again
# after a break, but not at once.
sign_in() {
    guest_do root "cp /mnt/prepare_state $application/" || case_fail "no package"
    guest_do ada "$application/prepare_state alice wonderland-7 Examplia-1 reconnect ${1:-} stay" || case_fail "no login"
    guest_do root "rm $application/prepare_state"
}

start_korvan() {
    [ -z "$told" ] || told+=", started again"
    guest_do ada 'setsid korvan >/tmp/korvan.out 2>&1 &'
    await_word "not connected"
}

# The middle of a button, as in scripts/demo/tour.sh.
click() { guest_do ada "xdotool mousemove --window \$(xdotool search --onlyvisible --name '^Korvan\$' | head -n 1) $1 $2 click 1"; }
click_connect() { click 210 403; }

connect() {
    click_connect
    await_word connected
    await_country Examplia
}

# Connected with lock-down on, while other programs send; the window is one that locks.
lock_down() {
    connect
    eventually 60 root "grep -A 1 'route delete' $log | grep -q OK"
    start_flood
}
expect_no_leaks() {
    leaks=$("$LAB" ctl leaked)
    [ "$leaks" = 0 ] || case_fail "$leaks packets went past the tunnel: $(ip netns exec world nft list counters table inet leaks)"
}
# For two seconds other programs send, and the lab counts.
expect_tunnelled() {
    await_country Examplia
    await_word connected
    start_flood
    sleep 2
    guest_do root 'kill -- -$(cat /tmp/flood)'
    expect_no_leaks
}

# The name of the card in the guest.
card() { guest_do root 'basename "$(dirname "$(grep -l 52:54:00:00:51:02 /sys/class/net/*/address)")"'; }
# The cable is out until NetworkManager has noticed.
unplug() {
    guest_monitor "set_link card off"
    eventually 60 root "! ip route | grep -q 'dev $(card)'"
}
plug_in() { guest_monitor "set_link card on"; }
# await_lines COUNT TEXT FILE SECONDS: waits until more than COUNT lines of the file hold the text.
await_lines() {
    local limit=$((SECONDS + $4 * patience))
    until [ "$(grep -c "$2" "$3")" -gt "$1" ]; do
        [ "$SECONDS" -lt "$limit" ] || case_fail "no $2 in $4 s"
        sleep 0.5
    done
}

# Until ada sits before her desktop.
await_desktop() {
    eventually 300 root true
    eventually 300 root 'loginctl show-user ada -p Display --value | grep -q .'
    eventually 100 ada 'xdotool getmouselocation && pgrep -u ada openbox'
    eventually 60 root 'systemctl is-system-running | grep -v starting && ip route | grep -q default'
    guest_do root 'mount -o ro /dev/vdb /mnt'
}

disconnect() {
    click 210 403
    await_word "not connected"
    eventually 120 root "! ls /sys/class/net | grep -q ^tun"
    await_country Homeland
}

# Other programs that send without end to hosts of the world, while the lab counts what leaves the guest.
start_flood() {
    "$LAB" ctl watch
    guest_do ada 'setsid bash -c "exec 8<> <(:); while :; do for ((i = 0; i < 10; ++i)); do
        for host in 203.0.113.10 203.0.113.30 2001:db8:113::10; do echo x >/dev/udp/\$host/9; done; read -rt .1 -u 8; done
        getent hosts names.korvan.example; done" >/dev/null 2>&1 & echo $! >/tmp/flood'
}

# All that must be as before when Korvan is through.
network_state() {
    guest_do root 'ip -4 rule; ip -6 rule; ip -4 route show table all; ip -6 route show table all | grep -v "table local" |
        sed "s/ expires [^ ]*//"; nft list ruleset; stat -c "%N" /etc/resolv.conf* | sort; cat /etc/resolv.conf;
        if systemctl -q is-active systemd-resolved; then resolvectl dns; resolvectl domain; fi
        ls -A /var/lib/korvan 2>/dev/null; true' | sed "${state_filter:-}"
}
remember_network() { network_state >"$guest_run/network"; }
expect_network() {
    local limit=$((SECONDS + 60 * patience))
    until diff -u "$guest_run/network" <(network_state) >"$guest_run/network.diff"; do
        [ "$SECONDS" -lt "$limit" ] || { cat "$guest_run/network.diff" >&2; case_fail "the network is not as it was"; }
        sleep 0.5
    done
}
# That the network is what NetworkManager makes of it: made anew, it is the same. What NetworkManager leaves alone must be as
# it was remembered.
expect_managed_network() {
    # NetworkManager numbers the cards as they come.
    local last='' limit=$((SECONDS + 30 * patience)) state_filter='s/ metric 1[0-9][0-9]//'
    until [ "$(guest_do root "$alien")" = "$alien_before" ]; do
        [ "$SECONDS" -lt "$limit" ] || case_fail "something is left behind: $(guest_do root "$alien")"
    done
    until network_state >"$guest_run/network"; [ "$last" = "$(<"$guest_run/network")" ]; do
        last=$(<"$guest_run/network")
        sleep 1
    done
    guest_do root 'nmcli networking off && nmcli networking on && nm-online -q -t 60'
    expect_network
}
alien='ip -4 rule; ip -6 rule; nft list ruleset; ip route show table 19311 2>/dev/null; ls /etc/resolv.conf* /var/lib/korvan; true'
remember_alien() { alien_before=$(guest_do root "$alien"); }

expect_no_complaints() {
    local said
    said=$(guest_do root 'journalctl --no-pager -q -o cat -k -g "apparmor=.DENIED" ; journalctl --no-pager -q -p err -g korvan; true')
    [ -z "$said" ] || case_fail "the journal complains: $said"
}
