#!/bin/bash
# Undoes what up.sh did for tunnels that have ended: name servers, the IPv6 block, a left-over host route. OpenVPN runs
# it when its tunnel goes down; the program runs it, without any environment, after it killed OpenVPN. All it needs is
# in the journal, so it may run late, twice, or beside another tunnel, whose settings stay. With "--stale" it does not
# wait for an OpenVPN that is just about to end.
set -u
export PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C
umask 077
folder=/run/korvan
resolv=/etc/resolv.conf
saved=/etc/resolv.conf.korvan

say() { echo "down.sh: $*" >&2; }

# lives PID START: that process runs and is the one that began at START, not another one that got its number since.
lives() {
    local stat fields
    { stat=$(<"/proc/$1/stat"); } 2>/dev/null || return 1
    read -ra fields <<<"${stat##*) }"
    [[ ${fields[0]} != [ZX] && ${fields[19]} == "$2" ]]
}

# value KEY FILE: the rest of the first line that begins with KEY.
value() { sed -n "s/^$1 //p;T;q" "$2"; }

# A process that was killed a moment ago may take until its memory is freed to be gone.
wait_for_ends() {
    local file n
    for file in "$folder"/tunnel.*; do
        for ((n = 0; n < 40; n++)); do
            { [[ -f $file ]] && lives "${file##*.}" "$(value start "$file")"; } || break
            sleep 0.05
        done
    done
}

# OpenVPN made the host route; another tunnel to the same server still needs it.
remove_host_route() {
    local server gateway
    read -r server gateway <<<"$(value route "$1")"
    [[ -n $server && $(grep -lsF "route $server " "$folder"/tunnel.* | wc -l) -eq 1 ]] || return
    ip -4 route del "$server/32" via "$gateway" 2>/dev/null
}

undo() {
    local file=$1 dev
    dev=$(value dev "$file")
    remove_host_route "$file"
    case $(value dns "$file") in
    resolved) resolvectl revert "$dev" 2>/dev/null ;;
    resolvconf) resolvconf -d "$dev.openvpn" 9>&- ;;
    esac
    rm -f "$file"
}

# What somebody else has written to the file since is newer than the copy, and stays.
restore_file() {
    local first= copy=$folder/resolv.conf
    [[ -f $resolv && ! -L $resolv ]] && read -r first <"$resolv"
    case $first in
    "# Korvan's tunnel; the file before: $saved") mv -fT "$saved" "$resolv" ;;
    "# Korvan's tunnel; the file before: $copy") [[ -f $copy ]] && cat "$copy" >"$resolv" ;;
    "# Korvan's tunnel; there was no file before") rm -f "$resolv" ;;
    esac || { say "can not restore $resolv"; return; } # the copy stays
    rm -f "$saved" "$copy"
}

[[ -d $folder || -L $folder ]] || mkdir -m 0700 "$folder"
[[ -d $folder && ! -L $folder && -O $folder ]] || { say "$folder is not ours"; exit 1; }
ending=${daemon_pid:-}
[[ -n $ending || ${1:-} == --stale ]] || wait_for_ends
exec 9>>"$folder/tunnel-lock"
flock -w 10 9

remaining=
for file in "$folder"/tunnel.*; do
    [[ -f $file && ! -L $file ]] || continue
    pid=${file##*.}
    if [[ $pid != "$ending" ]] && lives "$pid" "$(value start "$file")"; then
        remaining=1
    else
        undo "$file"
    fi
done
if [[ -z $remaining ]]; then
    restore_file
    nft delete table ip6 korvan_tunnel 2>/dev/null
fi
exit 0
