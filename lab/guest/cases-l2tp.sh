# shellcheck shell=bash disable=SC2016,SC2034,SC2154
# L2TP/IPsec against a real server in a namespace of the guest (l2tp-server.sh). As root with the helper that the window
# uses; by the window's own way in cases-l2tp-window.sh.

# NetworkManager gives its plug-in ten seconds, which are few where the processor is emulated and shared: the guest's time
# goes by the instructions that it has run.
[[ $name != l2tp* ]] || guest_clock=(-icount "shift=1,align=off,sleep=on")

for case in l2tp l2tp_{password,key,server,name,plugin,service,death,cable,cancel,other,xl2tpd}; do
    declare "from_$case=installed"
done

l2tp_key="lab key 7"
l2tp_server() {
    guest_do root "base64 -d >/root/l2tp-server.sh <<<'$(base64 -w 0 "$here/l2tp-server.sh")'"
    guest_do root "bash /root/l2tp-server.sh make '$l2tp_key'" >/dev/null || case_fail "no L2TP server"
    await_l2tp_server
}
await_l2tp_server() {
    eventually 120 root 'ip netns exec l2tp ss -lun | grep -q :1701 && ip netns exec l2tp ss -lun | grep -q :500'
}
compose4() { guest_do root "$application/compose4 $*" || true; }
set_up_l2tp() {
    [ "$(compose4 L2TP Korvan-L2TP "${1:-10.51.0.1}" "'${2:-$l2tp_key}'")" = Success ] || case_fail "no set-up"
}
dial_l2tp() { compose4 Korvan-L2TP alice "${1:-wonderland-7}"; }
connect_l2tp() {
    told=$(dial_l2tp)
    [ "$told" = Success ] || { l2tp_journal >&2; case_fail "said: $told"; }
}
hang_up_l2tp() { [ "$(compose4 Korvan-L2TP)" = Success ] || case_fail "no hang-up"; }
remove_l2tp() { [ "$(compose4 L2TP Korvan-L2TP)" = Success ] || case_fail "no removal"; }

# told_in_vain TEXT: what compose4 said must hold it.
told_in_vain() {
    told=${told%.}
    [[ $told == Error:*"$1"* ]] || { l2tp_journal >&2; case_fail "said: $told"; }
}
# dial_in_vain PASSWORD TEXT
dial_in_vain() {
    told=$(dial_l2tp "$1")
    told_in_vain "$2"
}
l2tp_journal() { guest_do root 'journalctl --no-pager -o short-monotonic -u NetworkManager -n 60; cat /var/log/l2tp-server.log'; }
seconds_in_guest() { guest_do root 'cut -d . -f 1 /proc/uptime'; }

# Neither the password nor the key, also as the plug-in writes that.
expect_no_secret() {
    local left
    left=$(guest_do root "grep -rlE 'wonderland-[0-9]|$l2tp_key|$(base64 <<<"$l2tp_key" | cut -c -11)' /etc /run /var /home \
        --exclude-dir=l2tp-server --exclude-dir=OpenVPN --exclude=Korvan-L2TP.nmconnection 2>/dev/null; true")
    [ -z "$left" ] || case_fail "a secret is left in $left"
}
expect_no_l2tp() {
    eventually 60 root '! nmcli -g NAME connection show --active | grep -q Korvan && ! ls /sys/class/net | grep -q ppp && [ -z "$(ip xfrm state)" ]'
    expect_no_secret
}
sent_l2tp() { compose4 CHECK Korvan-L2TP | sed -n 's/^Send //p'; }

case_l2tp() {
    l2tp_server
    remember_network
    set_up_l2tp
    connect_l2tp
    local before sent traffic=$((20 * 1028))
    before=$(sent_l2tp)
    guest_do root 'ping -q -c 20 -i 0.2 -s 1000 10.51.9.1' >/dev/null || case_fail "nothing comes through"
    sent=$(($(sent_l2tp) - before))
    [[ $sent -ge $traffic && $sent -lt $((traffic + 4000)) ]] || case_fail "counted $sent bytes of $traffic"
    hang_up_l2tp
    expect_no_l2tp
    remove_l2tp
    [ -z "$(guest_do root 'ls /run/NetworkManager/system-connections | grep Korvan')" ] || case_fail "the profile is left"
    expect_network
    told="Success with $(guest_do root 'journalctl -u NetworkManager | grep -m 1 -o "[a-z0-9]*l2tpd started"'), $sent bytes of $traffic sent"
    told=${told/ started/}
}

case_l2tp_password() {
    l2tp_server
    set_up_l2tp
    dial_in_vain wonderland-8 691
    expect_no_l2tp
}

case_l2tp_key() {
    l2tp_server
    set_up_l2tp 10.51.0.1 'another key'
    dial_in_vain wonderland-7 "pre-shared key"
    expect_no_l2tp
}

case_l2tp_server() {
    l2tp_server
    guest_do root 'bash /root/l2tp-server.sh stop'
    set_up_l2tp
    dial_in_vain wonderland-7 "does not answer"
    expect_no_l2tp
}

case_l2tp_name() {
    set_up_l2tp nowhere.korvan.example
    dial_in_vain wonderland-7 "name of the server is not known"
    expect_no_l2tp
}

case_l2tp_plugin() {
    set_up_l2tp
    guest_do root 'dpkg --remove --force-depends network-manager-l2tp' >/dev/null || case_fail "the plug-in stays"
    dial_in_vain wonderland-7 "install the package network-manager-l2tp"
    expect_no_l2tp
}

case_l2tp_service() {
    set_up_l2tp
    guest_do root 'systemctl stop NetworkManager'
    dial_in_vain wonderland-7 "NetworkManager is not running"
    guest_do root 'systemctl start NetworkManager'
    remove_l2tp
    expect_no_l2tp
}

# gone_after COMMAND: what ends the connection is noticed by the status command, which also forgets the key.
gone_after() {
    local began
    l2tp_server
    set_up_l2tp
    connect_l2tp
    began=$(seconds_in_guest)
    guest_do root "$1"
    until told=$(compose4 CHECK Korvan-L2TP) && [[ $told != *Success* ]]; do
        [ $(($(seconds_in_guest) - began)) -lt 60 ] || case_fail "never noticed"
        sleep 0.2
    done
    told+=", $(($(seconds_in_guest) - began)) s after its end"
    eventually 60 root "$application/compose4 CHECK Korvan-L2TP; ! test -e /etc/ipsec.d/ipsec.nm-l2tp.secrets"
    expect_no_l2tp
}
case_l2tp_death() { gone_after 'bash /root/l2tp-server.sh stop'; }
case_l2tp_cable() { gone_after 'ip -n l2tp link set eth0 down'; }

# A dial that is given up: at once, when the plug-in has begun, when the key is agreed on, when the link comes, and when all
# is done.
case_l2tp_cancel() {
    local moment answer
    l2tp_server
    set_up_l2tp
    for moment in true '[ -e /etc/ipsec.d/ipsec.nm-l2tp.secrets ]' '[ -n "$(ip xfrm state)" ]' '[ -e /sys/class/net/ppp0 ]' \
        '[ -s /tmp/dial ]'; do
        guest_do root "rm -f /tmp/dial; setsid $application/compose4 Korvan-L2TP alice wonderland-7 >/tmp/dial 2>&1 &
            until $moment; do [ ! -s /tmp/dial ] || exit 1; sleep .02; done" || case_fail "not seen: $moment: $(guest_do root 'cat /tmp/dial')"
        answer=$(compose4 Korvan-L2TP)
        [ "$answer" = Success ] || case_fail "no hang-up at: $moment: $answer"
        eventually 60 root '! pgrep -x compose4'
        expect_no_l2tp
    done
    guest_do root 'sleep 20' # for so long the plug-in may work on
    expect_no_l2tp
    told="Success, five times"
}

# Somebody has another L2TP connection, which has the plug-in's one file for itself.
case_l2tp_other() {
    l2tp_server
    guest_do root "nmcli connection add type vpn vpn-type l2tp con-name other vpn.data \
        'gateway=10.51.0.1,user=alice,ipsec-enabled=yes,ipsec-psk-flags=0,password-flags=0' \
        vpn.secrets 'password=wonderland-7,ipsec-psk=$l2tp_key'" >/dev/null || case_fail "no other connection"
    guest_do root 'nmcli -w 60 connection up other' >/dev/null || case_fail "the other one is not connected"
    set_up_l2tp 10.51.0.1 'another key'
    hang_up_l2tp
    remove_l2tp
    guest_do root 'nmcli -g NAME connection show --active | grep -qx other && test -e /etc/ipsec.d/ipsec.nm-l2tp.secrets' ||
        case_fail "the other one is not as it was"
    told="nothing; the other connection stands"
}

# Where there is another daemon too, the plug-in takes that: without it xl2tpd does as well.
case_l2tp_xl2tpd() {
    guest_do root 'test -e /usr/sbin/kl2tpd && rm /usr/sbin/kl2tpd' || { told="no other daemon is there" && return; }
    case_l2tp
}
