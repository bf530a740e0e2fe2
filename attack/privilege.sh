#!/usr/bin/env bash
# What an ordinary user tries to get root's rights by way of Korvan, or somebody else's secrets, on a desktop of the lab:
# privilege.sh [FOLDER [ROW...]], a build or an unpacked package of any release, build/debug unless given; ROW is the name
# of a function row_... below. "control" is what the same attack gains where nobody is on his guard (privilege/Victim.cpp, or
# root itself doing it): a row in which that is 0 shows nothing. Needs the targets privilege_victim and prepare_state.
# MOMENTS: how often the window or its root part is killed, 50 unless given.
# shellcheck disable=SC2015,SC2016,SC2034,SC2046,SC2059,SC2086,SC2154
set -uo pipefail
attack=$(dirname "$(realpath "$0")")
root=$(dirname "$attack")
folder=$(realpath "${1:-$root/build/debug}")
shift
[ -n "${LAB_DIR:-}" ] || exec "$root/lab/lab" run -- bash "$attack/privilege.sh" "$folder" "$@"
# shellcheck source=privilege/desk.sh
. "$attack/privilege/desk.sh"

# Variables that load code, name folders of code, or name files to read or write.
row_variables() {
    local variable value way tries=0 control=0 got all=0
    for variable in LD_PRELOAD LD_LIBRARY_PATH LD_AUDIT GCONV_PATH QT_PLUGIN_PATH QT_QPA_PLATFORM_PLUGIN_PATH QT_QPA_GENERIC_PLUGINS \
        QT_QPA_PLATFORMTHEME QT_STYLE_OVERRIDE QT_LOGGING_CONF QT_IM_MODULE QT_ACCESSIBILITY OPENSSL_CONF OPENSSL_ENGINES \
        OPENSSL_MODULES SSL_CERT_FILE XDG_CONFIG_HOME XDG_CONFIG_DIRS XDG_DATA_DIRS XDG_RUNTIME_DIR XDG_CACHE_HOME PATH HOME TZ LANG \
        LOCPATH NLSPATH TMPDIR DBUS_SESSION_BUS_ADDRESS DBUS_SYSTEM_BUS_ADDRESS AT_SPI_BUS_ADDRESS XAUTHORITY PULSE_SERVER \
        PULSE_CONFIG_PATH PULSE_COOKIE ALSA_CONFIG_PATH BASH_ENV ENV SHELLOPTS PKEXEC_UID KORVAN_PERSON SUDO_UID; do
        case $variable in
            LD_PRELOAD | LD_AUDIT) value=$here/hostile.so ;;
            BASH_ENV | ENV) value=$here/script; echo "$here/hostile" >"$here/script" ;;
            *BUS_ADDRESS) value=unixexec:path=$here/hostile ;;
            *_UID | KORVAN_PERSON) value=0 ;;
            PATH) value=$here/bin:/usr/bin:/bin ;;
            OPENSSL_CONF) value=$here/openssl.cnf ;;
            ALSA_CONFIG_PATH) value=$here/asoundrc ;;
            QT_LOGGING_CONF | PULSE_COOKIE) value=$secret ;;
            *) value=$here ;;
        esac
        for way in "${ways[@]}"; do
            [ $variable != PATH ] || [ "$way" != korvan ] || way=/usr/bin/korvan
            allow "${way##*/}"
            "$LAB" as ada env "$variable=$value" "$way" >/dev/null 2>&1 & begun
            sleep 0.5
            end
            tries=$((tries + 1))
        done
        got=$(as_root)
        victim "$variable=$value"
        [ "$(as_root)" -eq "$got" ] || control=$((control + 1))
        [ "$got" -eq 0 ] || echo "   $variable"
        all=$((all + got)); clean
    done
    row $tries $control $all "environment variables, one at a time, run code as root"
}

# Settings below HOME that name a library or are links, and what any program writes to the screen.
row_home() {
    rm -rf "$ada"/{.config,.dbus} # an older release has made them, as root
    "$LAB" as ada bash -c "mkdir -p ~/.dbus/session-bus
        ln -sf '$secret' ~/.dbus/session-bus/\$(cat /etc/machine-id)-$display"
    both_ways
    local got; got=$(taken)
    victim
    row 2 "$(taken)" "$got" "link for the bus address in ~/.dbus overwrites root's file"
    rm -rf "$ada/.dbus"
    "$LAB" as ada bash -c "cp '$here/asoundrc' ~/.asoundrc"
    both_ways
    got=$(taken)
    victim
    row 2 "$(taken)" "$got" "library that ~/.asoundrc names"
    rm -rf "$ada"/{.asoundrc,.config,.dbus}
    "$LAB" as ada bash -c "mkdir -p ~/.config/pulse; ln -sf '$secret' ~/.config/pulse/cookie"
    "$LAB" as ada python3 -c 'import os, socket, sys
os.makedirs(os.path.dirname(sys.argv[1]), exist_ok=True)
server = socket.socket(socket.AF_UNIX)
server.bind(sys.argv[1])
server.listen()
while True:
    with server.accept()[0] as sound, open(sys.argv[2], "ab") as file:
        sound.settimeout(1)
        try:
            while block := sound.recv(4096): file.write(block)
        except OSError: pass' "/run/user/$(id -u ada)/pulse/native" "$ada/heard" & local server=$!; disown
    sleep 0.5
    both_ways
    got=$(taken "$(grep -csa SECRET "$ada/heard")"); rm -f "$ada/heard"
    victim PULSE_SERVER="unix:/run/user/$(id -u ada)/pulse/native"
    row 2 "$(taken "$(grep -csa SECRET "$ada/heard")")" "$got" "link for the sound cookie sends root's file to a sound server"
    kill $server
    rm -rf "$ada/heard" "$ada/.config/pulse" "$ada/.dbus"
    xprop -root -f AT_SPI_BUS 8s -set AT_SPI_BUS "unixexec:path=$here/hostile"
    both_ways
    got=$(taken)
    victim
    row 2 "$(taken)" "$got" "bus address on the screen that names a program"
    xprop -root -remove AT_SPI_BUS
    rm -rf "$ada/.dbus"
}

# A bundle whose program is root's and set-user-id, all else its user's.
row_own_bundle() {
    local own_bundle=$ada/own/Korvan.app/Contents/MacOS
    "$LAB" as ada bash -c "mkdir -p ~/own/victim/tools; cp -r /opt/korvan/Korvan.app ~/own/ 2>/dev/null; cp '$here/bin/netstat' ~/own/victim/tools/
        for tool in netstat route ping; do cp -f '$here/hostile' '$own_bundle'/tools/\$tool; done
        for file in broker compose network; do cp -f '$here/hostile' '$own_bundle'/\$file; done"
    chown root "$own_bundle/Korvan"; chmod 4755 "$own_bundle/Korvan"
    run "$own_bundle/Korvan"; end
    kill -KILL $(pgrep -f "^$own_bundle/") 2>/dev/null
    local got; got=$(taken)
    cp "$here/privilege_victim" "$ada/own/victim/"; chmod 4755 "$ada/own/victim/privilege_victim"
    "$LAB" as ada "$ada/own/victim/privilege_victim" >/dev/null 2>&1
    row 1 "$(taken)" "$got" "set-user-id bundle in the user's own folder"
    rm -rf "$ada/own"
}

# Own proxy that offers an update, and answers a thousand times as long as they look.
make_offers() {
    local new=$here/new/Korvan.app/Contents/MacOS head='HTTP/1.1 200 OK\r\nConnection: close\r\n'
    cat "$LAB_KEYS/web.key" "$LAB_KEYS/web.crt" >"$here/proxy/web.pem"
    mkdir -p "$here/new"
    cp -a /opt/korvan/Korvan.app "$here/new/"
    printf '#!/bin/sh\nexec %s\n' "$here/hostile" >"$new/Korvan"
    printf 99.1 >"$new/version"
    (cd "$here/new" && zip -qry "$here/update.zip" Korvan.app)
    { printf "$head\r\n"; cat "$here/update.zip"; } >"$here/proxy/korvan-99.zip"
    { printf "$head\r\n"; echo '<update><system>macos</system><version>99.1</version><url>https://portal.korvan.example/korvan-99.zip</url><message></message></update>'; } >"$here/proxy/offer"
    { printf "${head}Content-Encoding: gzip\r\n\r\n"; head -c 400M /dev/zero | gzip -9; } >"$here/proxy/bomb"
    { printf "$head\r\n"; curl -sk -d 'username=alice&password=wonderland-7' https://api.korvan.example/api; } >"$here/proxy/api"
    chown -R ada "$here/proxy"
    "$LAB" as ada python3 "$here/proxy.py" 8888 "$here/proxy" 2>"$here/proxy.log" & proxy=$!; disown
    await bash -c 'exec 3<>/dev/tcp/127.0.0.1/8888'
}
restore() { rm -rf /opt/korvan/*; cp -a "$pristine/." /opt/korvan/; }
# Root's own update by that archive: does its program run?
updates() {
    mkdir -p /opt/korvan/update.temp
    (cd /opt/korvan/update.temp && unzip -qo "$here/update.zip" && cp $application/compose9 .)
    timeout 20 /opt/korvan/update.temp/compose9 /opt/korvan/update.temp Korvan >/dev/null 2>&1
    local worked; worked=$(taken)
    kill -KILL $(pgrep -f '/compose9 ') 2>/dev/null
    restore
    [ "$worked" -gt 0 ]
}
windows() { xdotool search --onlyvisible --name "$1"; }
press() { local window; for window in $(windows "$1"); do xdotool windowfocus "$window" key --clearmodifiers "$2"; done 2>/dev/null; sleep 0.5; }
row_proxy() {
    local way got=0 most=0 control size
    cp "$here/proxy/offer" "$here/proxy/update.xml"
    prepare alice wonderland-7 Examplia-1 127.0.0.1:8888
    for way in "${ways[@]}"; do
        allow "$way"
        run "$way"
        await eval '[ -n "$(windows ^Update)" ]'
        press '^Update$' Return
        press '^Korvan$' space
        sleep 4
        press '^Update$' Return
        $own || await test -s $state/update/update.zip
        end
        # What no click brings, the person puts there.
        ! $own || "$LAB" as ada bash -c "mkdir -p '$state/update'; cp '$here/update.zip' '$state/update/'"
        run "$way"
        for _ in 1 2 3 4 5 6; do sleep 2; press . Return; [ "$(as_root)" -eq $got ] || break; done
        end
        got=$(as_root)
        restore
    done
    allow korvan
    got=$(taken)
    updates && control=1 || control=0
    row 4 $control "$got" "update from the user's own proxy"

    cp "$here/proxy/bomb" "$here/proxy/update.xml"
    prepare alice wonderland-7 Examplia-1 127.0.0.1:8888
    for way in "${ways[@]}"; do
        allow "$way"
        run "$way"
        sleep 4
        size=$(for pid in $(root_part); do grep VmHWM /proc/$pid/status; done | awk '{ print int($2 / 1024) }' | sort -n | tail -n 1)
        [ "${size:-0}" -le $most ] || most=$size
        end
    done
    allow korvan
    env -i DISPLAY="$DISPLAY" HOME="$ada" http_proxy=http://127.0.0.1:8888 PATH=/usr/bin:/bin \
        "$here/privilege_victim" http://127.0.0.1:8888/update.xml >/dev/null 2>&1 & begun
    sleep 4
    control=$(awk '/VmHWM/ { print ($2 > 200000) }' /proc/$started/status)
    kill -KILL $started
    row 2 "${control:-0}" $((most > 200)) "compressed answer of 0.4 MB: $most MB in a process of root's"
    kill -KILL $proxy
    $own && rm -rf "$state" || rm -rf $application/{cfg,update,log.txt}
}

# Anybody holds the bundle: reads, locks and runs what is in it.
row_locks() {
    local got=0 control=0 way
    "$LAB" as ben bash -c "for file in /opt/korvan /opt/korvan/Korvan.app $application $application/*; do flock -s \$file sleep 1000 & flock \$file sleep 1000 & done
        $application/tools/ping -c 1000 127.0.0.1 & wait" >/dev/null 2>&1 & disown
    sleep 1
    flock -n $application true || control=1
    for way in "${ways[@]}"; do
        allow "$way"
        run "$way"
        logged 'Default Gateway' || got=$((got + 1))
        end
    done
    allow korvan
    updates || got=$((got + 1))
    row 3 $control $got "locks on the bundle, tools/ping of it: a start or an update fails"
    kill -KILL $(pgrep -u ben)
}

# A name of a user that leads elsewhere.
row_user_name() {
    local got name way
    prepare alice wonderland-7 Examplia-1
    run korvan
    await logged 'SUCCESS: download'
    end
    ln -sf "$secret" "$ada/x.crt"
    name=../../../../../../../../../..$ada/x
    prepare "$name" wonderland-7 Examplia-1
    for way in "${ways[@]}"; do
        allow "$way"
        run "$way"
        sleep 3
        end
        cat "$(log_of ada)" >>"$here/logs"
    done
    allow korvan
    got=$(grep -c SECRET "$here/logs")
    row 2 "$(grep -c SECRET "$state/cfg/OpenVPN/$name.crt")" "$got" "user name with ../ and a link: root's file in the log"
    $own && rm -rf "$state" || rm -rf $application/{cfg,log.txt}
}

# Links and fifos in place of every state file. Where the state is root's, no person can put any.
row_state() {
    $own || return
    local file kind tries=0 bad=0 control=0
    local patience=3 # a fifo may keep a start from going on, to nobody else's harm
    while IFS=';' read -r file _; do
        for kind in link fifo; do
            rm -rf "$state"
            file=${file%/}
            "$LAB" as ada bash -c "mkdir -p '$state/$(dirname "$file")'; [ $kind = link ] && ln -s '$secret' '$state/$file' || mkfifo '$state/$file'"
            tries=$((tries + 1))
            run korvan
            end
            ! grep -rqs SECRET "$state" --include=log.txt || bad=$((bad + 1))
            bad=$((bad + $(overwritten)))
            [ $kind = fifo ] || { echo x >>"$state$file"; control=$((control + $(overwritten))); } 2>/dev/null
        done
    done < <(sed -n 's/^    ROW([A-Za-z0-9]*, *"\([^"]*\)".*/\1;/p' "$root/names/StateFiles.h")
    rm -rf "$state"
    row $tries $control $bad "link to root's file, or fifo, for each state file"
}

# A second person, and other programs of the window's own, while the first has a tunnel; what runs as root meanwhile.
row_second() {
    local part attempt got=0 tries=0 control=0 first log libraries
    prepare alice wonderland-7 Examplia-1 lock-down
    run korvan
    await logged 'Initialization Sequence Completed'
    await root_part
    for part in $(root_part); do
        for attempt in "cat /proc/$part/environ" "ls /proc/$part/fd/" "cat $state/cfg/login" "cat /proc/$part/mem" "kill -STOP $part" "kill -9 $part"; do
            tries=$((tries + 2))
            ! "$LAB" as ben $attempt >/dev/null 2>&1 || got=$((got + 1))
            # The login is ada's own.
            [[ $attempt = *login ]] && continue
            ! "$LAB" as ada $attempt >/dev/null 2>&1 || got=$((got + 1))
            [[ $attempt = kill* ]] || ! $attempt >/dev/null 2>&1 || control=$((control + 1))
        done
        ! timeout 2 "$LAB" as ada strace -o /dev/null -p "$part" >/dev/null 2>&1 || got=$((got + 1))
    done
    first=$started
    "$LAB" as ben korvan >/dev/null 2>&1 & begun
    log=$ben/.local/share/korvan/log.txt
    await eval "grep -qs 'is using Korvan' $log || ! kill -0 $started"
    tries=$((tries + 2))
    grep -qs 'ada is using Korvan' "$log" || got=$((got + 1))
    ! grep -qs 'SUCCESS: download .* profile' "$log" || got=$((got + 1))
    pgrep -f '^/usr/sbin/openvpn .*--askpass' >/dev/null || { got=$((got + 1)); echo "   the tunnel has ended"; }
    kill -KILL $started
    row $tries $control $got "second person, and the window's own programs: signals, memory, login, tunnel"

    if $own; then
        local result
        result=$("$LAB" as ben python3 "$here/window.py" $application/broker strangers "$ben" "" 2>"$here/said")
        grep -q "busy $(id -u ada)" "$here/said" || result="${result% *} 1"
        row $result "brokers that strangers start: no window, somebody's, while one has the tunnel"
    fi

    libraries='libQt|libX|libxcb|libwayland|libpulse|libasound|libssl|libgnutls|libcurl'
    got=$(for part in $(pgrep -u root -f "^(/bin/bash )?$application"); do grep -oE "$libraries" "/proc/$part/maps"; done | sort -u | wc -l)
    ! $own || got=$((got + $(for part in broker compose compose4 composec network tools/route; do ldd $application/$part; done | grep -cE "$libraries")))
    row "$(pgrep -u root -f "$application" | wc -l)" "$(ldd $application/Korvan | grep -cE "$libraries")" "$got" "libraries of screen, sound, TLS or HTTP in what runs as root"
    started=$first
    check_rights korvan; end
    allow set-user-id; run $application/Korvan; check_rights set-user-id; end; allow korvan
    prepare alice wonderland-7 Examplia-1
    run korvan; await logged 'Certificate expired'; logged 'Certificate expired' && control=1 || control=0; end
    rm -f "$(log_of ada)" "$(log_of ben)"
    "$LAB" as ben korvan >/dev/null 2>&1 & begun
    await logged 'Default Gateway' ben; sleep 2
    logged 'Certificate expired' ben && got=1 || got=0
    end
    row 1 $control $got "second person is signed in as the first"
}
# That the window is the person's process, by all that the kernel knows.
check_rights() {
    local user group groups wrong=0 pid
    user=$(id -u ada) group=$(id -g ada) groups=$(id -G ada)
    rights() { awk '/^(Uid|Gid|Groups|Cap(Inh|Prm|Eff|Amb)):/ { $1 = $1; print }' "/proc/$1/status"; }
    expected() { printf 'Uid: %s %s %s %s\nGid: %s %s %s %s\nGroups: %s\nCapInh: 0\nCapPrm: 0\nCapEff: 0\nCapAmb: 0\n' $user $user $user $user $group $group $group $group "$groups" | sed 's/: 0$/: 0000000000000000/'; }
    pid=$(pgrep -f "^$application/Korvan" | tail -n 1)
    [ "$(rights "$pid")" = "$(expected)" ] || { wrong=1; echo "   $(rights "$pid" | paste -sd ';')"; }
    row 1 "$([ "$(rights $$)" = "$(expected)" ] && echo 0 || echo 1)" $wrong "window with rights that are not the person's ($1 start)"
}

# What a hostile window asks of the installed broker.
row_broker() {
    $own || return
    local result
    "$LAB" as ada mkdir -p "$state/cfg/OpenVPN"
    result=$("$LAB" as ada python3 "$here/window.py" $application/broker garbage)
    await gone
    row $result "random requests with random descriptors to the broker"
    result=$("$LAB" as ada python3 "$here/window.py" $application/broker arguments "$state" "$secret")
    await gone
    row ${result% *} "$(taken "${result##* }")" "requests of the right shape with hostile arguments and profiles"
    result=$("$LAB" as ada python3 "$here/window.py" $application/broker swap "$state" "$secret")
    await gone
    row $result "profile swapped for a link while the broker's helper reads it"
}

# What a server gains that takes OpenVPN over: modules, ports and memory, tracing, mounts, reboot, of all that root can.
row_openvpn() {
    local dangerous=(16 17 19 21 22)
    able() {
        local mask=$((16#$(awk '/^CapBnd:/ { print $2 }' "/proc/$1/status"))) bit count=0
        for bit in "${dangerous[@]}"; do count=$((count + (mask >> bit & 1))); done
        echo $count
    }
    prepare alice wonderland-7 Examplia-1
    run korvan; await logged 'Initialization Sequence Completed'
    row ${#dangerous[@]} "$(able $$)" "$(able "$(pgrep -f '^/usr/sbin/openvpn .*--askpass')")" "capabilities of OpenVPN and its scripts that no tunnel needs"
    end
}

# Killed and stopped at any moment, in lock-down.
network() { ip route; ip -6 route; ip rule; nft list ruleset; cat /etc/resolv.conf; }
row_kill() {
    local moment left=0 before changed=0 all=${MOMENTS:-50}
    prepare alice wonderland-7 Examplia-1 lock-down
    run korvan; await logged 'Initialization Sequence Completed'; end # has the profile
    before=$(network)
    for ((moment = 0; moment < all; moment++)); do
        "$LAB" as ada korvan >/dev/null 2>&1 & begun
        sleep "$((moment * 25 / all / 10)).$((RANDOM % 10))"
        case $((moment % 6)) in
            0) kill -KILL $started ;;
            1) kill -KILL $(root_part) ;;
            2) kill -STOP $started; sleep 0.1; kill -KILL $started ;;
            3) kill -TERM $started; sleep 0.05; kill -KILL $(root_part) ;;
            4) kill -STOP $(root_part); kill -KILL $started; sleep 0.3; kill -KILL $(root_part) ;;
            5) kill -KILL $started $(root_part) ;;
        esac 2>/dev/null
        [ "$(network)" = "$before" ] || changed=$((changed + 1))
        sleep 0.1
        end
        await eval '[ "$(network)" = "$before" ]' || { left=$((left + 1)); echo "   moment $moment:"; diff <(echo "$before") <(network); }
    done
    row $all $changed $((left + outlived + $(taken))) "kill and stop of window and root part in lock-down: another network, or root outlives it"
}

# The removal of the package, with a process of ada's that ada holds: root's terminal, or the end of the removal.
removal() { # COMMAND...: what ada gains of it, 0 to 2, once she has caught a process
    rm -f "$ada/found"
    "$LAB" as ada python3 "$here/hold.py" $application/tools/defaults "$ada/found" & disown
    until [ -s "$ada/found" ] || [ $((tries++)) -gt 50 ]; do timeout -k 1 40 script -qec "$*" /dev/null >/dev/null 2>&1 </dev/null; done
    echo $(($? >= 124)) $(cat "$ada/found") | awk '{ print $1 + ($2 != "nothing") }'
    kill -KILL $(pgrep -u ada)
}
row_removal() {
    local tries=0 tool="$application/tools/defaults read loginwindow AutoLaunchedApplicationDictionary"
    "$LAB" as ada mkdir -p "$ada/.config/korvan"
    row 1 "$(removal "setpriv --reuid=ada --regid=ada --clear-groups env HOME=$ada $tool; true")" \
        "$(removal bash "$LAB_BUILD/packaging/debian/prerm" remove)" "removal of the package: root's terminal, or held for ever"
    rm -rf "$ada/.config"
}

# The trap does work.
LD_PRELOAD=$here/hostile.so /bin/true
[ "$(as_root)" -gt 0 ] && clean || { echo "attack: the trap does not work"; exit 1; }
echo ' tries  control  gained'
[ $# -gt 0 ] || set -- variables home own_bundle proxy locks user_name state second broker openvpn kill removal
for each; do
    case $each in proxy | locks) [ -s "$here/update.zip" ] || make_offers ;; esac
    "row_$each"
done
[ $total -eq 0 ] && [ $unproven -eq 0 ]
