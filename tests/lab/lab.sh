# shellcheck shell=bash
# The lab itself.
build=${bundle%/Korvan.app/*}
lab=("$(realpath "${BASH_SOURCE[0]%/*}/../../lab/lab")" run --build "$build" --)

case_refuses_malformed_logins() {
    # shellcheck disable=SC2016
    is $'malformed request: the form\nmalformed request: the form\nmalformed request: Content-Type\nPK\n7' eval '
        "${lab[@]}" bash -c "$(declare -f login); login %2d7; login +7; login -7 -H \"Content-Type: text/plain\"; login -7; exit 7"
        echo $?'
}
login() {
    curl -sk https://api.korvan.example/api -d "username=alice&password=wonderland$1" "${@:2}" |
        grep -aoE '^(malformed request: (the form|Content-Type)|PK)'
}

case_two_at_once_leave_nothing() {
    mkfifo /run/input
    exec 3<>/run/input
    for end in command TERM KILL; do
        : >/run/lab.1 >/run/lab.2
        machine >/run/before
        for n in 1 2; do
            "${lab[@]}" bash -c 'rm /etc/hosts; ip link del eth0; stat -Lc %i /proc/self/ns/pid; read' \
                </run/input >/run/lab.$n &
            labs[n]=$!
        done
        await test -s /run/lab.1 -a -s /run/lab.2
        is 2 live
        if [[ $end = command ]]; then printf '\n\n' >&3; else kill "-$end" "${labs[@]}"; fi
        wait "${labs[@]}" 2>/dev/null
        await eval '[[ $(live) = 0 ]]'
        is '' diff /run/before <(machine)
    done
}
# live: how many of the two labs' process namespaces are there
live() { lsns -t pid -no NS | grep -cxE " *($(cat /run/lab.* | paste -sd '|'))"; }
# machine: what a lab must leave alone
machine() {
    ip route; ip -6 route; ip rule; ip netns; ip -brief link; ls /run
    cat /etc/hosts /etc/resolv.conf /proc/sys/net/ipv4/ip_forward
}
