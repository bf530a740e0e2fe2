# shellcheck shell=bash disable=SC2016,SC2034,SC2154
# The cases, each a function case_NAME that starts from the snapshot in $from_NAME ("installed" if there is none). What the
# window says, the table tells; a case may add to $told.

# Installed on a clean desktop, started by an ordinary person at the screen, whom polkit asks nothing.
from_package=clean
case_package() {
    remember_network
    guest_do root 'apt-get install -q -y /mnt/korvan.deb' >"$guest_run/apt.log" 2>&1 || case_fail "$(cat "$guest_run/apt.log")"
    sign_in
    start_korvan
    [ "$(guest_do root 'ps -o user= -C Korvan,broker | sort | paste -sd " "')" = "ada root" ] || case_fail "wrong rights"
    connect
    disconnect
    expect_network
    expect_no_complaints
}

from_lockdown=window-locking
case_lockdown() {
    remember_network
    lock_down
    sleep 2
    expect_no_leaks
    disconnect
    expect_network
    [ "$("$LAB" ctl leaked)" -gt 0 ] || case_fail "the lab does not see what leaves"
}

# The lease is renewed.
from_lease=window-locking
case_lease() {
    lock_down
    local leases
    leases=$(grep -c DHCPACK "$guest_run/dhcp.log") || true # there may be none yet
    await_lines "$leases" DHCPACK "$guest_run/dhcp.log" 180
    await_country Examplia
    await_word connected
    expect_no_leaks
}

# expect_return_from COMMAND...: something happens to the network while everything else is locked out.
expect_return_from() {
    remember_network
    lock_down
    "$@"
    await_country Examplia
    await_word connected
    expect_no_leaks
    disconnect
    expect_network
}

from_reapply=window-locking
case_reapply() { expect_return_from guest_do root "nmcli device reapply $(card)"; }

from_new_up=window-locking
case_new_up() { expect_return_from guest_do root "nmcli connection up \"\$(nmcli -g GENERAL.CONNECTION device show $(card))\""; }

# The cable is out for some seconds, which OpenVPN does not notice.
pull_cable() {
    unplug
    plug_in
    eventually 60 root "ip route | grep -q 'dev $(card)'"
}
from_flap=window-locking
case_flap() { expect_return_from pull_cable; }

# polkit takes longer to start than the bus waits for it, as on a machine that has just been started.
case_slow_polkit() {
    guest_do root 'mkdir -p /run/systemd/system/polkit.service.d && cd /run/systemd/system/polkit.service.d &&
        printf "[Service]\nExecStartPre=/bin/sleep 40\n" >slow.conf && systemctl daemon-reload && systemctl stop polkit'
    sign_in
    start_korvan
    guest_do root "grep 'pkexec ended with' $log" >&2 || case_fail "polkit was not too slow"
    connect
}
