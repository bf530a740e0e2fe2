#!/usr/bin/env bash
# The guest's end of its command line: on the port "korvan.agent" a line "PERSON COMMAND" comes in, the command in base64,
# and a line "STATUS OUTPUT" goes out. A person other than root is at the screen: the command joins that session.
set -uo pipefail

as_person() {
    local person=$1 user session
    user=$(id -u "$person") && session=$(loginctl show-user "$person" -p Display --value) || return 1
    echo "$BASHPID" >"/sys/fs/cgroup/user.slice/user-$user.slice/session-$session.scope/cgroup.procs" || return 1
    cd "/home/$person" || return 1
    exec setpriv --reuid="$person" --regid="$person" --init-groups --inh-caps=-all env -i HOME="/home/$person" \
        USER="$person" LOGNAME="$person" PATH=/usr/local/bin:/usr/bin:/bin LANG=C.UTF-8 DISPLAY=:0 \
        XAUTHORITY="/home/$person/.Xauthority" XDG_SESSION_ID="$session" XDG_RUNTIME_DIR="/run/user/$user" \
        DBUS_SESSION_BUS_ADDRESS="unix:path=/run/user/$user/bus" bash -c "$2"
}

exec 3<>/dev/virtio-ports/korvan.agent
while read -r -u 3 person command; do
    command=$(base64 -d <<<"$command")
    if [ "$person" = root ]; then
        (cd /root && exec env PAGER=cat bash -c "$command")
    else
        (as_person "$person" "$command")
    fi </dev/null 3>&- >/run/agent.output 2>&1
    printf '%s %s\n' $? "$(base64 -w 0 /run/agent.output)" >&3
done
