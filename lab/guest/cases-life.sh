# shellcheck shell=bash disable=SC2016,SC2034,SC2154
# The package in a life: it comes, is started at login, serves two people, gets a successor, goes.

# Where none of the programs and libraries are that it depends on, apt finds them.
from_install=clean
case_install() {
    guest_do root 'apt-get purge -q -y --autoremove $(cat /var/local/packages/missing)' >"$guest_run/apt.log" 2>&1 ||
        case_fail "$(cat "$guest_run/apt.log")"
    guest_do root 'only="-o Dir::Etc::SourceList=/var/local/packages/list -o Dir::Etc::SourceParts=-"
        apt-get update -q $only && apt-get install -q -y $only /mnt/korvan.deb' >"$guest_run/apt.log" 2>&1 ||
        case_fail "$(cat "$guest_run/apt.log")"
    remember_network
    sign_in
    start_korvan
    connect
    disconnect
    expect_network
    expect_no_complaints
}

login_items="$application/tools/defaults %s loginwindow AutoLaunchedApplicationDictionary"
# ada signs in anew: the display manager does that for her, and her session's autostart has Korvan in it.
sign_in_anew() {
    guest_do root 'systemctl restart lightdm'
    eventually 300 ada 'xdotool getmouselocation && pgrep -u ada openbox && pgrep -x Korvan'
}
run_at_login() {
    guest_do ada "${login_items/\%s/write} '({Hide = 0; Path = \"/opt/korvan/Korvan.app\";})'" || case_fail "no login item"
}
# As sign_in, to connect at once.
sign_in_for_good() {
    guest_do root "cp /mnt/prepare_state $application/"
    guest_do "$1" "$application/prepare_state alice wonderland-7 Examplia-1" || case_fail "no login"
    guest_do root "rm $application/prepare_state"
}

# The second time she signs out while she is connected. Started so, it stays behind its icon until it is started again.
from_autostart=installed
case_autostart() {
    remember_network
    sign_in_for_good ada
    run_at_login
    for _ in first second; do
        sign_in_anew
        await_country Examplia
    done
    guest_do ada 'setsid korvan >/tmp/korvan.out 2>&1 &'
    await_word connected
    disconnect
    expect_network
    expect_no_complaints
}

# ben comes to the screen while ada's session stays.
ben_comes() {
    guest_do root 'systemd-run -q Xorg :1 vt8 -ac -nolisten tcp'
    eventually 120 root 'DISPLAY=:1 xdotool getmouselocation'
    guest_do root 'systemd-run -q -p User=ben -p PAMName=lightdm-autologin -E XDG_SEAT=seat0 -E XDG_VTNR=8 -E XDG_SESSION_TYPE=x11 \
        -E XDG_SESSION_CLASS=user -E DISPLAY=:1 openbox-session'
    eventually 120 ben 'export DISPLAY=:1; xdotool getmouselocation && pgrep -u ben openbox'
    eventually 60 root 'loginctl show-session $(loginctl show-user ben -p Display --value) -p Active | grep -q yes'
}
from_two_people=window
case_two_people() {
    remember_network
    connect
    ben_comes
    sign_in_for_good ben
    guest_do ben 'DISPLAY=:1 setsid korvan >/tmp/ben.out 2>&1 &'
    await_text "ada is using Korvan on this computer"
    told+=', and ben: "ada is using Korvan on this computer"'
    await_country Examplia
    guest_do root 'pkill -u ben -x Korvan'
    guest_do root 'pkill -u ada -x Korvan'
    await_country Homeland
    guest_do ben 'DISPLAY=:1 setsid korvan >/tmp/ben.out 2>&1 &'
    await_country Examplia
    await_word connected
    [ "$(guest_do root 'ps -o user= -C Korvan,broker | sort | paste -sd " "')" = "ben root" ] || case_fail "wrong rights"
    guest_do root 'pkill -u ben -x Korvan'
    await_country Homeland
    expect_network
    expect_no_complaints
}

# A newer package comes while ada is locked in, and she starts Korvan again.
from_upgrade=window-locking
case_upgrade() {
    remember_network
    lock_down
    guest_do root 'dpkg-deb -R /mnt/korvan.deb /tmp/later && sed -i "s/^Version: .*/&+later/" /tmp/later/DEBIAN/control &&
        dpkg-deb -Zgzip -b /tmp/later /tmp/later.deb && apt-get install -q -y /tmp/later.deb' >"$guest_run/apt.log" 2>&1 ||
        case_fail "$(cat "$guest_run/apt.log")"
    await_country Examplia
    await_word connected
    expect_no_leaks
    disconnect
    expect_network
    guest_do ada 'pkill -x Korvan'
    eventually 60 root '! pgrep -x "Korvan|broker"'
    start_korvan
    connect
    disconnect
    expect_network
    expect_no_complaints
}

# The package goes while ada is locked in.
from_removal=window-locking
case_removal() {
    local left
    remember_network
    run_at_login
    lock_down
    expect_no_leaks
    guest_do root 'apt-get remove -q -y korvan' >"$guest_run/apt.log" 2>&1 || case_fail "$(cat "$guest_run/apt.log")"
    left=$(guest_do root 'ps -o args= -C Korvan,broker,standin,network,openvpn') || true
    [ -z "$left" ] || case_fail "it still runs: $left"
    await_country Homeland
    expect_network
    left=$(guest_do root 'find /run/korvan /home/ada/.config/autostart -type f 2>/dev/null') || true
    [ -z "$left" ] || case_fail "left behind: $left"
    guest_do root 'apt-get purge -q -y korvan && ! test -e /opt/korvan' >"$guest_run/apt.log" 2>&1 ||
        case_fail "$(cat "$guest_run/apt.log")"
    told+=", then the window was gone"
    expect_no_complaints
}
