# shellcheck shell=bash disable=SC2016,SC2034,SC2154
# L2TP as ada uses it: she picks a server of the list, types the password, and reads what the window says.

l2tp_window() {
    l2tp_key=mellowfinch # the service's own
    l2tp_server
    guest_do ada "echo 'Examplia-L2TP|10.51.0.1' >$state/cfg/L2TP.txt"
    click 105 349
    guest_do ada 'sleep 1; xdotool key Down; sleep 1; xdotool key Return'
    await_text Examplia-L2TP
}

# type_l2tp PASSWORD [remember]: "Connect", and what the box asks for.
type_l2tp() {
    local box="xdotool search --onlyvisible --name '^L2TP Password\$'"
    until guest_do ada "for i in {1..20}; do $box && exit; sleep .2; done; false" >/dev/null; do
        click_connect # which a window that is just changing its look may miss
    done
    eventually 60 ada "$box windowfocus; xdotool getwindowfocus getwindowname | grep -q L2TP"
    guest_do ada "xdotool type --delay 50 '$1'"
    [ -z "${2:-}" ] || guest_do ada "xdotool key Tab space"
    guest_do ada "xdotool key Return"
}
# answer_box TEXT: it says so; it heeds no key for the first second.
answer_box() {
    await_text "$1"
    told+="${told:+, }\"$1\""
    guest_do ada 'sleep 2; xdotool key Return'
    await_word "not connected"
}

from_l2tp_window=window
case_l2tp_window() {
    l2tp_window
    type_l2tp wonderland-8 remember
    eventually 200 ada "test -s $state/l2tp"
    answer_box "Username or password is not valid."
    eventually 200 ada "! test -e $state/l2tp"
    expect_no_l2tp
    type_l2tp wonderland-7
    await_word connected
    guest_do root 'ping -q -c 20 -i 0.2 -s 1000 10.51.9.1' >/dev/null || case_fail "nothing comes through"
    await_text 20KB
    disconnect_l2tp
    expect_no_l2tp
}
disconnect_l2tp() {
    click_connect # "Disconnect" is there now
    await_word "not connected"
}

# The server dies; the next time she gives up while it is silent.
from_l2tp_window_death=window
case_l2tp_window_death() {
    l2tp_window
    type_l2tp wonderland-7
    await_word connected
    local began
    began=$(seconds_in_guest)
    guest_do root 'bash /root/l2tp-server.sh stop'
    await_text "Unknown error, please check log."
    began=$(($(seconds_in_guest) - began))
    [ "$began" -le 40 ] || case_fail "told after $began s" # seconds of which go into reading the screen
    answer_box "Unknown error, please check log."
    told+=" after $began s"
    expect_no_l2tp
    type_l2tp wonderland-7
    await_word connecting
    disconnect_l2tp
    expect_no_l2tp
}
