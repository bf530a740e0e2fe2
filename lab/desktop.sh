# shellcheck shell=bash
# The subscriber's machine as a desktop that several people use, with Korvan installed as by its package. Sourced by
# "lab desktop", "lab as" and "lab start".

installed=/opt/korvan/Korvan.app/Contents/MacOS

# Covers a folder, so that files may be put into it that the machine itself does not have.
cover() {
    local layers=$LAB_DIR/layers/${1//\//-}
    mkdir -p "$layers/new" "$layers/work"
    mount -t overlay -o "lowerdir=$1,upperdir=$layers/new,workdir=$layers/work" overlay "$1"
}

# Users: ada and ben, whom polkit takes for active users at the screen, and cleo, who is not at it.
make_people() {
    local name
    for name in ada ben cleo; do
        useradd --no-create-home --home-dir "$LAB_DIR/people/$name" --shell /bin/bash "$name"
        install -d -m 0711 "$LAB_DIR/people"
        install -d -m 0700 -o "$name" -g "$name" "$LAB_DIR/people/$name"
        install -d -m 0755 /run/user
        install -d -m 0700 -o "$name" -g "$name" "/run/user/$(id -u "$name")"
        [ ! -r "${XAUTHORITY:-}" ] || install -m 0600 -o "$name" -g "$name" "$XAUTHORITY" "$LAB_DIR/people/$name/.Xauthority"
    done
}

# The files as the package brings them, from an unpacked package or a build.
install_korvan() {
    local from=$1
    if [ ! -d "$from/opt" ]; then
        DESTDIR=$LAB_DIR/package cmake --install "$from" --prefix / >"$LAB_DIR/install.log" || fail "see $LAB_DIR/install.log"
        from=$LAB_DIR/package
    fi
    mount -t tmpfs -o mode=755 korvan /opt
    cp -a "$from/opt/." /opt/
    cover /usr/bin
    cp -a "$from/usr/bin/korvan" /usr/bin/
    cover /usr/share/polkit-1
    cp -a "$from/usr/share/polkit-1/actions/." /usr/share/polkit-1/actions/
    chown -R root:root /opt/korvan /usr/bin/korvan
}

# The system's bus and polkit. There is no seat here whose active user polkit could see, so that a rule has to say who
# is one.
start_polkit() {
    mkdir -p /run/dbus /etc/polkit-1/rules.d
    echo 'polkit.addRule(function (action, subject) { return action.id == "example.korvan.start" &&
        (subject.user == "ada" || subject.user == "ben") ? polkit.Result.YES : null; });' >/etc/polkit-1/rules.d/10-lab.rules
    dbus-daemon --system --fork --nopidfile
    setsid /usr/lib/polkit-1/polkitd --no-debug >/dev/null 2>&1 &
    await polkit "$LAB_DIR/install.log" dbus-send --system --print-reply --dest=org.freedesktop.DBus / \
        org.freedesktop.DBus.GetNameOwner string:org.freedesktop.PolicyKit1
}

make_desktop() {
    make_people
    install_korvan "$1"
    start_polkit
}

# What belongs to a person's session at the screen of DISPLAY: the bus with the one for screen readers, the sound server,
# tray and notifications, the browser. What comes of them is in the person's folder: "heard" is what the sound server
# plays, raw, "shown" what tray and notifications were given, "opened" the browser's pages.
start_session() {
    local name=$1
    local home=$LAB_DIR/people/$name runtime
    runtime=/run/user/$(id -u "$name")
    as "$name" dbus-daemon --session --fork --nopidfile "--address=unix:path=$runtime/bus"
    as "$name" dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus org.a11y.Bus.GetAddress >/dev/null

    as "$name" pulseaudio -n --daemonize --exit-idle-time=-1 -L "module-null-sink sink_name=speakers" \
        -L module-native-protocol-unix 2>"$LAB_DIR/sound.log"
    as "$name" parec --raw --device=speakers.monitor >"$home/heard" &

    cp "$lab/shell.py" "$LAB_DIR/"
    as "$name" "$LAB_DIR/shell.py" >"$home/shown" &
    await "the tray" "$home/shown" as "$name" dbus-send --session --print-reply --dest=org.freedesktop.DBus / \
        org.freedesktop.DBus.GetNameOwner string:org.freedesktop.Notifications

    as "$name" mkdir -p "$home/.local/share/applications" "$home/.config"
    write "$name" "$home/browser" '#!/bin/sh' "echo \"\$1\" >>$home/opened"
    chmod 755 "$home/browser"
    write "$name" "$home/.local/share/applications/browser.desktop" '[Desktop Entry]' Type=Application Name=Browser \
        "Exec=$home/browser %u" 'MimeType=x-scheme-handler/http;x-scheme-handler/https;'
    write "$name" "$home/.config/mimeapps.list" '[Default Applications]' x-scheme-handler/http=browser.desktop \
        x-scheme-handler/https=browser.desktop
}

# write PERSON FILE LINE...
write() { printf '%s\n' "${@:3}" | as "$1" tee "$2" >/dev/null; }

as() { (as_person "$@"); }

# The command with the rights, and the environment, of that person.
as_person() {
    local name=$1 pass=() variable runtime
    shift
    runtime=/run/user/$(id -u "$name")
    [ ! -S "$runtime/bus" ] || : "${DBUS_SESSION_BUS_ADDRESS:=unix:path=$runtime/bus}"
    for variable in DISPLAY DBUS_SESSION_BUS_ADDRESS LAB_DIR LAB_CONTROL ${PERSON_VARIABLES:-}; do
        [ -z "${!variable:-}" ] || pass+=("$variable=${!variable}")
    done
    exec setpriv --reuid="$name" --regid="$name" --init-groups --inh-caps=-all env -i -C / HOME="$LAB_DIR/people/$name" \
        USER="$name" LOGNAME="$name" PATH=/usr/local/bin:/usr/bin:/bin LANG=C.UTF-8 \
        XDG_RUNTIME_DIR="$runtime" "${pass[@]}" "$@"
}

# Korvan in one of its three starts.
start_korvan() {
    local way=$1 name=$2
    shift 2
    case $way in
        root) exec "$installed/Korvan" "$@" ;;
        set-user-id) chmod 4755 "$installed/Korvan"; as_person "$name" "$installed/Korvan" "$@" ;;
        installed) chmod 0755 "$installed/Korvan"; as_person "$name" korvan "$@" ;;
        *) usage ;;
    esac
}
