#!/usr/bin/env bash
# person.sh BUILD TEST [ARGUMENT...]: a test of the window in a start that is not root's, on the subscriber's machine of a
# lab. The test is put into the installed bundle, so that its window gets the root part of that, and runs as ada; for
# its own works it may become root (CAP_SETUID and the like).
set -euo pipefail
"$LAB" desktop "$1"
cp "$2" /opt/korvan/Korvan.app/Contents/MacOS/
cd /
export HOME=$LAB_DIR/people/ada USER=ada LOGNAME=ada XDG_RUNTIME_DIR XDG_DATA_HOME=
XDG_RUNTIME_DIR=/run/user/$(id -u ada)
capabilities=+chown,+dac_override,+fowner,+kill,+net_admin,+net_raw,+setgid,+setuid,+sys_admin
exec setpriv --reuid=ada --regid=ada --init-groups "--inh-caps=$capabilities" "--ambient-caps=$capabilities" \
    "/opt/korvan/Korvan.app/Contents/MacOS/$(basename "$2")" "${@:3}"
