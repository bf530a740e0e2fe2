# shellcheck shell=bash
# The tools ping and defaults, and composec, with stand-ins for what they start and for a user "ada" with a home.
tools=$bundle/tools
# program PATH: the script on standard input stands there from now on
program() { f=/run/${1##*/}; (echo '#!/bin/bash'; cat) >$f; chmod 755 $f; mount --bind $f $1; }
echo 'ada:x:4711:4711::/run/ada:/bin/sh' | cat /etc/passwd - >/run/passwd
mount --bind /run/passwd /etc/passwd
mkdir /run/ada; chown 4711:4711 /run/ada
key="loginwindow AutoLaunchedApplicationDictionary"
missing="The domain/default pair of (${key/ /, }) does not exist"
korvan='{Hide = 0; Path = "/opt/Korvan.app";}'

case_ping() {
    program /usr/bin/ping <<'END'
echo $$ "$LC_ALL$LD_PRELOAD$*" >/run/called
printf %s "$(</run/summary)"
while [[ -e /run/hang ]]; do sleep 0.01; done
exit 7
END
    summary() { echo "$1" >/run/summary; LD_PRELOAD=/lib/none.so $tools/ping -c20 vpn.example; echo "status $?"; } 2>/dev/null
    is 'rtt min/avg/max/stddev = 10.9/23.7/40.1/5.2 msstatus 7' summary 'rtt min/avg/max/mdev = 10.9/23.7/40.1/5.2 ms'
    is '4 sent, 1 received, 75% packet lossstatus 7' summary '4 sent, 1 received, +1 duplicates, +3 errors, 75% packet loss'
    is $'0 received, 100% packet loss\nstatus 7' summary '' # a name that nobody knows
    is 'C-c20 -- vpn.example' cut -d' ' -f2- /run/called
    touch /run/hang; rm /run/called
    $tools/ping -c20 vpn.example >/run/output & tool=$!; disown
    until [[ -s /run/called ]]; do sleep 0.01; done
    kill -9 $tool
    read -r real _ </run/called
    while kill -0 $real 2>/dev/null; do sleep 0.01; done # ends with its caller, or this test never does
}

case_sstpc() {
    program /usr/sbin/sstpc <<'END'
tr '\0' ' ' </proc/$$/cmdline | sed 's/passwordfd [0-9]*/passwordfd N/'; echo "$LC_ALL $PATH$X"
while [[ $1 != passwordfd ]]; do shift; done; cat <&$2
END
    is '/bin/bash /usr/sbin/sstpc --log-stderr --log-level 3 --save-server-route vpn.example -- user -ada plugin passwordfd.so passwordfd N debug usepeerdns defaultroute replacedefaultroute refuse-pap refuse-eap noauth mtu 1400 logfile /a b/vpnlog.txt C /usr/sbin:/usr/bin:/sbin:/bin
a "b' env X=1 $bundle/composec --user -ada --password 'a "b' vpn.example --log-level 3 --debug usepeerdns defaultroute \
        refuse-pap refuse-eap noauth mtu 1400 logfile '/a b/vpnlog.txt'
    is 'composec: "--ca-cert=/tmp/mine" is no server' $bundle/composec --ca-cert=/tmp/mine
    is 'composec: can not use the argument "mtu"' $bundle/composec vpn.example mtu plugin
    is 'composec: can not use the argument "logfile"' $bundle/composec vpn.example logfile /run/a logfile /run/b
    is 'composec: the password is longer than 255 bytes' $bundle/composec vpn.example --password "$(printf %256s)"
}

# The list is kept as it is, and what can be understood is mirrored to the autostart folder.
case_login_items() {
    d() { setpriv --reuid 4711 --regid 4711 --clear-groups $tools/defaults "$@"; }
    rm -rf /run/ada/.config
    is "$missing" d read $key
    mkdir -p /run/ada/.config/autostart; cd /run/ada/.config/autostart
    echo '[Desktop Entry]' >korvan-own.desktop; chown -R 4711:4711 /run/ada
    # items LIST PROBLEMS PROGRAM: how many entries are complained about, and which program starts at login
    items() {
        is $2 grep -c '^defaults: ' <(d write $key "$1" 2>&1)
        is "$1" d read $key
        is "$3" sed -n 's/^Exec="\(.*\)" -hide$/\1/p' korvan-*
    }
    items "($korvan,$korvan)" 0 /opt/Korvan.app/Contents/MacOS/Korvan
    is '' find /run/ada -type f ! -user 4711
    items '({Path = "/opt/korvan/Korvan.app";})' 0 /usr/bin/korvan
    items '({Path = "/a} b$%`\K";})' 0 '/a} b\\$%%\\`\\\\K/Contents/MacOS/Korvan'
    items "({Hide = 0; Path = \"/a\"b/Korvan.app\";},$korvan)" 1 /opt/Korvan.app/Contents/MacOS/Korvan
    items '({Hide = 0;},{Path = "";},{Path = "b/Korvan.app";},{Hide = 0; Path' 4 ''
    items $'({Path = "/a\nExec=/bin/sh/Korvan.app";})' 1 ''
    is 'korvan-own.desktop' ls
}
