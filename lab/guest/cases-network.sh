# shellcheck shell=bash disable=SC2016,SC2034,SC2154
# Networks that go and come, and who looks after the name servers.

# The cable is out until OpenVPN has given up.
cable_out_and_in() {
    guest_monitor "set_link card off"
    await_lost
    plug_in
    await_word connected
}

from_cable=window-locking
case_cable() { expect_return_from cable_out_and_in; }

from_cable_open=window
case_cable_open() {
    remember_network
    connect
    cable_out_and_in
    expect_tunnelled
    disconnect
    expect_network
}

# Another network with another gateway: while everything else is locked out, while connected, between two connections.
roam() {
    unplug
    ip link set guest0 master away0
    plug_in
    eventually 60 root "ip route show table all | grep -q 'default via 198.51.101.1'"
}
# OpenVPN may go on, or end and be started again.
await_tunnel() {
    await_country Examplia
    await_word connected
}
from_roam=window-locking
case_roam() {
    remember_alien
    guest_other_network
    lock_down
    roam
    await_tunnel
    expect_no_leaks
    disconnect
    expect_managed_network
}

from_roam_open=window
case_roam_open() {
    remember_alien
    guest_other_network
    connect
    roam
    expect_tunnelled
    disconnect
    expect_managed_network
}

from_roam_between=window-locking
case_roam_between() {
    remember_alien
    guest_other_network
    lock_down
    disconnect
    roam
    await_country Homeland
    lock_down
    sleep 2
    expect_no_leaks
    disconnect
    expect_managed_network
}

# A second card comes, and has to do alone when the first one loses its cable.
second_card() {
    guest_other_network
    guest_second_card
    eventually 60 root "ip route show table all | grep -q 'default via 198.51.101.1'"
    await_country Examplia
    unplug
    await_tunnel
}
from_second=window-locking
case_second() {
    remember_alien
    lock_down
    second_card
    expect_no_leaks
    disconnect
    expect_managed_network
}

from_second_open=window
case_second_open() {
    remember_alien
    connect
    second_card
    expect_tunnelled
    disconnect
    expect_managed_network
}

# names_by COMMAND: somebody else than systemd-resolved looks after the name servers.
names_by() {
    guest_do root "$1" >"$guest_run/names.log" 2>&1 || case_fail "$(cat "$guest_run/names.log")"
    eventually 60 root 'grep -q "^nameserver 198.51.100.1" /etc/resolv.conf && ip route | grep -q default'
    remember_network
    lock_down
    [ "$(inside_name)" = 198.18.1.1 ] || case_fail "names are asked past the tunnel: $(inside_name)"
    expect_no_leaks
    disconnect
    expect_network
    [ "$(inside_name)" = 203.0.113.10 ] || case_fail "names: $(inside_name)"
}
inside_name() { guest_do ada "getent ahostsv4 names.korvan.example | sed -n '1s/ .*//p'"; }

names_of_networkmanager='systemctl disable --now systemd-resolved && rm -f /etc/resolv.conf /usr/sbin/resolvconf &&
    systemctl restart NetworkManager'
from_names_nm=window-locking
case_names_nm() { names_by "$names_of_networkmanager"; }

from_names_resolvconf=window-locking
case_names_resolvconf() {
    names_by 'DEBIAN_FRONTEND=noninteractive apt-get install -q -y /root/resolvconf_*.deb && systemctl restart NetworkManager'
}
