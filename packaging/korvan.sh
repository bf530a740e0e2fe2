#!/bin/sh
# Starts Korvan, which needs root's rights. Polkit gives them to an active local user without a password, and asks
# everybody else for an administrator's.
program=/opt/korvan/Korvan.app/Contents/MacOS/Korvan

# Tells the person why nothing starts: on the terminal, or in a box where there is none.
complain() {
    echo "korvan: $1" >&2
    if [ -t 2 ] || [ -z "${DISPLAY-}" ]; then
        return
    elif command -v zenity >/dev/null; then
        zenity --error --no-markup --title=Korvan --text="$1"
    elif command -v kdialog >/dev/null; then
        kdialog --title Korvan --error "$1"
    elif command -v xmessage >/dev/null; then
        xmessage -center -title Korvan "$1"
    fi
}

if [ "$(id -u)" -eq 0 ]; then
    # The repair of the network must work without a screen.
    [ "$*" != -reset ] || [ -n "${DISPLAY-}" ] || export QT_QPA_PLATFORM=offscreen
    exec "$program" "$@"
fi
if ! command -v pkexec >/dev/null; then
    complain "pkexec is missing. Install the package pkexec, or start Korvan as root: sudo korvan"
    exit 127
fi
pkexec "$program" "$@"
status=$?
# 126: the person dismissed the question. 127: polkit does not allow it, or nobody could be asked.
if [ "$status" -eq 127 ]; then
    complain "Korvan needs root's rights, and polkit did not give them. Either you are not at this computer's own \
screen and no polkit agent runs that could ask for a password, or an administrator forbids it. Start it as root: \
sudo korvan"
fi
exit "$status"
