# shellcheck shell=bash disable=SC2016,SC2034,SC2154
# The cases, each a function case_NAME that starts from the snapshot in $from_NAME ("installed" if there is none).

# Installed on a clean desktop, started by an ordinary person at the screen, whom polkit asks nothing.
from_package=clean
case_package() {
    remember_network
    guest_do root 'apt-get install -q -y /mnt/korvan.deb' >"$guest_run/apt.log" 2>&1 || case_fail "$(cat "$guest_run/apt.log")"
    connect
    [ "$(guest_do root 'ps -o user= -C Korvan,broker | sort | paste -sd " "')" = "ada root" ] || case_fail "wrong rights"
    told="connected, no question asked"
    disconnect
    expect_network
    expect_no_complaints
}

case_lockdown() {
    remember_network
    lock_down
    expect_no_leaks
    disconnect
    expect_network
    [ "$("$LAB" ctl leaked)" -gt 0 ] || case_fail "the lab does not see what leaves"
    told="connected and locked, then as before"
}

# The plug is pulled while ada is locked in: after the next start the machine is its own, and Korvan starts.
case_power_cut() {
    remember_network
    lock_down
    expect_no_leaks
    guest_cut
    guest_start
    await_desktop
    expect_network
    start_korvan
    await_country Examplia
    told="after the next start: connected"
}

# The lease is renewed, NetworkManager sets the device up anew, the cable is out for some seconds.
case_lease() {
    lock_down
    local leases
    leases=$(grep -c DHCPACK "$guest_run/dhcp.log")
    await_lines "$leases" DHCPACK "$guest_run/dhcp.log" 100
    await_country Examplia
    expect_no_leaks
    told="connected all the time"
}

case_reapply() {
    remember_network
    lock_down
    guest_do root "nmcli device reapply $(card)" || case_fail "reapply"
    sleep 3
    await_country Examplia
    expect_no_leaks
    disconnect
    expect_network
    told="connected, then as before"
}

case_new_up() {
    remember_network
    lock_down
    guest_do root "nmcli connection up \"\$(nmcli -g GENERAL.CONNECTION device show $(card))\"" || case_fail "connection up"
    sleep 3
    await_country Examplia
    expect_no_leaks
    disconnect
    expect_network
    told="connected again, then as before"
}

case_flap() {
    remember_network
    lock_down
    guest_monitor "set_link card off"
    sleep 8
    guest_monitor "set_link card on"
    await_country Examplia
    expect_no_leaks
    disconnect
    expect_network
    told="connected again, then as before"
}
