# shellcheck shell=bash disable=SC2016,SC2034,SC2154
# Sleep, and the plug that is pulled.

# ada shuts the lid and opens it again.
sleep_and_wake() {
    local limit=$((SECONDS + 60 * patience))
    guest_do root 'systemd-run -q --on-active=1 systemctl suspend'
    until guest_monitor "info status" | grep -q suspended; do
        [ "$SECONDS" -lt "$limit" ] || case_fail "the guest does not fall asleep"
        sleep 0.2
    done
    "$@"
    guest_monitor system_wakeup
}
# Longer than the server waits for a sign of life.
long_sleep() { sleep 45; }
# While it sleeps its server and the router forget it.
forget_guest() {
    "$LAB" ctl stop Examplia-1
    "$LAB" ctl start Examplia-1
    kill "$guest_router"
    wait "$guest_router" 2>/dev/null || true
    rm -f "$guest_run/leases"
    guest_lend
}

from_sleep=window-locking
case_sleep() { expect_return_from sleep_and_wake sleep 3; }

from_sleep_long=window-locking
case_sleep_long() { expect_return_from wake_late sleep_and_wake long_sleep; }

from_sleep_open=window
case_sleep_open() {
    remember_network
    connect
    wake_late sleep_and_wake long_sleep
    expect_tunnelled
    disconnect
    expect_network
}

# What was slept through is noticed: the window says so, and connects anew.
wake_late() {
    "$@"
    await_return
}

# The machine stands still, as a stopped emulated one does: its clock too, until somebody sets it.
stand_still() {
    guest_monitor stop
    forget_guest
    guest_monitor cont
    guest_do root 'date -s "+1 hour"'
}
from_standstill=window-locking
case_standstill() { expect_return_from wake_late stand_still; }

# The plug is pulled: after the next start the machine is its own before Korvan is started, and Korvan starts.
pull_plug() {
    guest_cut
    guest_start
    await_desktop
    expect_network
    guest_do root '[ -z "$(dpkg --verify korvan)" ] || { cd /opt/korvan && md5sum --quiet -c /mnt/update.sums; }' ||
        case_fail "files are damaged: $(guest_do root 'dpkg --verify korvan')"
    start_korvan
    connect
}

from_power_cut=window-locking
case_power_cut() {
    remember_network
    lock_down
    expect_no_leaks
    pull_plug
}

from_power_cut_open=window
case_power_cut_open() {
    remember_network
    connect
    pull_plug
}

from_power_cut_early=window-locking
case_power_cut_early() {
    remember_network
    click_connect
    eventually 60 root 'pgrep -x openvpn'
    pull_plug
}

from_power_cut_names=window-locking
case_power_cut_names() {
    guest_do root "$names_of_networkmanager"
    eventually 60 root 'grep -q "^nameserver 198.51.100.1" /etc/resolv.conf && ip route | grep -q default'
    remember_network
    lock_down
    expect_no_leaks
    guest_do root sync
    pull_plug
}

# cut_update COMMAND: the plug is pulled in an update, as soon as the command succeeds. One of the two programs is there whole;
# an update that was cut off is offered again.
cut_update() {
    remember_network
    sign_in
    guest_do root "tail -n 1 /mnt/update.pub >$application/update-keys; sync"
    guest_do ada 'cd ~/.local/share/korvan && mkdir update && cp /mnt/update.zip* update && sync'
    guest_do ada 'setsid korvan >/dev/null 2>&1 &'
    eventually 120 root "$1"
    pull_plug
}
case_power_cut_update() { cut_update 'ls -d /opt/korvan/.Korvan.app.update'; }
case_power_cut_updated() { cut_update "grep -q 99.1 $application/version"; }
