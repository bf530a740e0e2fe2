# shellcheck shell=bash disable=SC2016,SC2034,SC2154
# L2TP/IPsec against a real server in a namespace of the guest (l2tp-server.sh). As root with the helper that the window uses.

# NetworkManager gives its plug-in ten seconds, which are few where the processor is emulated and shared: the guest's time
# goes by the instructions that it has run.
[[ $name != l2tp* ]] || guest_clock=(-icount "shift=1,align=off,sleep=on")

l2tp_server() {
    guest_do root "base64 -d >/root/l2tp-server.sh <<<'$(base64 -w 0 "$here/l2tp-server.sh")'"
    guest_do root 'bash /root/l2tp-server.sh' || case_fail "no L2TP server"
    eventually 60 root 'ip netns exec l2tp ss -lun | grep -q :1701 && ip netns exec l2tp ss -lun | grep -q :500'
}
compose4() { guest_do root "$application/compose4 $*" || true; }
set_up_l2tp() {
    [ "$(compose4 L2TP Korvan-L2TP "${1:-10.51.0.1}" "'${2:-lab key 7}'")" = Success ] || case_fail "no set-up"
}
dial_l2tp() { compose4 Korvan-L2TP alice "${1:-wonderland-7}"; }

# dial_in_vain PASSWORD TEXT: what compose4 says must hold the text.
dial_in_vain() {
    told=$(dial_l2tp "$1")
    [[ $told == *"$2"* ]] || { l2tp_journal >&2; case_fail "said: $told"; }
}
l2tp_journal() { guest_do root 'journalctl --no-pager -o short-monotonic -u NetworkManager -n 60; cat /var/log/l2tp-server.log'; }

expect_no_secret() {
    local left
    left=$(guest_do root 'grep -rlE "wonderland-[0-9]|lab key 7" /etc /run /var /home --exclude-dir=l2tp-server \
        --exclude-dir=OpenVPN 2>/dev/null; true')
    [ -z "$left" ] || case_fail "a secret is left in $left"
}

case_l2tp() {
    l2tp_server
    set_up_l2tp
    told=$(dial_l2tp)
    [ "$told" = Success ] || { l2tp_journal >&2; case_fail "said: $told"; }
    guest_do root 'ping -q -c 10 -i 0.2 -s 1000 10.51.9.1' || case_fail "nothing comes through"
    local sent
    sent=$(compose4 CHECK Korvan-L2TP | sed -n 's/^Send //p')
    [ "${sent:-0}" -gt 10000 ] || case_fail "counted $sent bytes"
    [ "$(compose4 Korvan-L2TP)" = Success ] || case_fail "no hang-up"
    [ "$(compose4 L2TP Korvan-L2TP)" = Success ] || case_fail "no removal"
    expect_no_secret
}

case_l2tp_password() {
    l2tp_server
    set_up_l2tp
    dial_in_vain wonderland-8 691
    compose4 L2TP Korvan-L2TP
    expect_no_secret
}

case_l2tp_key() {
    l2tp_server
    set_up_l2tp 10.51.0.1 'another key'
    dial_in_vain wonderland-7 "pre-shared key"
}

case_l2tp_server() {
    l2tp_server
    guest_do root 'bash /root/l2tp-server.sh stop'
    set_up_l2tp
    dial_in_vain wonderland-7 "does not answer"
}

case_l2tp_name() {
    set_up_l2tp nowhere.korvan.example
    dial_in_vain wonderland-7 "name of the server is not known"
}
