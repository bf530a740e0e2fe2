#!/bin/bash
# with-networkmanager.sh PLUGIN COMMAND...: runs COMMAND beside a NetworkManager of its own, with PLUGIN as the plug-in for
# L2TP (and IKEv2, which nothing dials) and none for PPTP. Started by: unshare --net --mount --pid --fork --kill-child --mount-proc
set -e
mount -t sysfs -o ro sysfs /sys # NetworkManager waits for udev where it can write here
for folder in /run /etc/NetworkManager /var/lib/NetworkManager /usr/lib/NetworkManager/VPN /usr/lib/NetworkManager/conf.d; do
    mount -t tmpfs -o mode=755 tmpfs $folder
done
mkdir /run/dbus
for name in l2tp strongswan; do
    printf '[VPN Connection]\nname=%s\nservice=org.freedesktop.NetworkManager.%s\nprogram=%s\n' \
        $name $name "$1" >/usr/lib/NetworkManager/VPN/nm-$name-service.name
done
cat >/run/bus.conf <<'END'
<busconfig>
  <type>system</type><listen>unix:path=/run/dbus/system_bus_socket</listen>
  <policy context="default"><allow send_destination="*"/><allow own="*"/><allow eavesdrop="true"/></policy>
</busconfig>
END
printf '%s\n' '[main]' plugins=keyfile auth-polkit=false dns=none 'no-auto-default=*' \
    '[keyfile]' 'unmanaged-devices=interface-name:peer*,interface-name:tunnel' >/etc/NetworkManager/NetworkManager.conf
exec 3>&1 >/run/log 2>&1
ip link add uplink type veth peer name peer0
ip link add tunnel type veth peer name peer1
for name in lo peer0 peer1 tunnel; do ip link set $name up; done
dbus-daemon --config-file=/run/bus.conf --nopidfile --fork
/usr/sbin/NetworkManager --no-daemon &
until nmcli general; do sleep 0.1; done
nmcli connection add type ethernet ifname uplink con-name uplink ipv4.method manual ipv4.addresses 198.51.100.2/24 \
    ipv4.gateway 198.51.100.1 ipv6.method disabled
nmcli connection up uplink
exec "${@:2}" >&3 2>&1
