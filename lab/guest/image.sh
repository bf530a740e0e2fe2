#!/usr/bin/env bash
# image.sh SUITE PACKAGE: makes the disk of a guest, a desktop of that Debian (bookworm, trixie) with what PACKAGE depends
# on but without it, from where this machine gets its own packages, and prints its folder: disk.raw, kernel, initrd. A
# disk that was made by the same recipe is kept.
#
# The desktop: systemd, NetworkManager with systemd-resolved, polkit, and lightdm, which signs ada in under openbox.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
suite=$1
folder=$(realpath "$here/../..")/build/guest/$suite
root=$folder/root

depends=$(dpkg-deb -f "$2" Depends | sed 's/|[^,]*//g; s/([^)]*)//g; s/[ ]//g')
desktop=systemd-sysv,udev,dbus,libpam-systemd,polkitd,network-manager,systemd-resolved,apparmor,lightdm,openbox
desktop+=,xserver-xorg-core,xserver-xorg-input-libinput,xdotool,x11-utils,kmod,initramfs-tools,linux-image-amd64
desktop+=,procps,netbase,ca-certificates,curl,iproute2,dbus-user-session,python3-xdg
desktop+=,xl2tpd,strongswan,strongswan-charon,strongswan-starter,libstrongswan-standard-plugins,ppp
# The server's end of L2TP is xl2tpd; the client's is what apt would take with the plug-in.
[ "$suite" = bookworm ] || desktop+=,go-l2tp

recipe=$(cat "$0" "$here/agent.sh" "$here/keep-packages.sh" <(echo "$depends") | sha256sum)
[ "$(cat "$folder/recipe" 2>/dev/null)" != "$recipe" ] || { echo "$folder"; exit; }

make_root() {
    local from
    # shellcheck disable=SC2016
    from=$(apt-get indextargets --format '$(COMPONENT) $(REPO_URI)' "Created-By: Packages" |
        awk '$1 == "main" { print $2; exit }')
    rm -rf "$folder"
    mkdir -p "$folder"
    mmdebstrap --variant=minbase --include="$desktop,$depends" --aptopt='APT::Install-Recommends "false"' \
        --customize-hook="$here/keep-packages.sh" "$suite" "$root" "$from"
}

furnish_root() {
    local in=$root/etc
    echo guest >"$in/hostname"
    printf '127.0.0.1 localhost guest\n::1 localhost\n' >"$in/hosts"
    echo '/dev/vda / ext4 rw 0 1' >"$in/fstab"
    ln -sf ../run/systemd/resolve/stub-resolv.conf "$in/resolv.conf"
    rm -f "$root/usr/sbin/policy-rc.d"
    chroot "$root" useradd --create-home --shell /bin/bash ada
    chroot "$root" useradd --create-home --shell /bin/bash ben
    mkdir -p "$in/lightdm/lightdm.conf.d"
    printf '[Seat:*]\nautologin-user=ada\nautologin-user-timeout=0\nuser-session=openbox\n' >"$in/lightdm/lightdm.conf.d/10-ada.conf"
    install -m 755 "$here/agent.sh" "$root/usr/local/sbin/agent"
    cat >"$in/systemd/system/agent.service" <<-END
	[Unit]
	ConditionPathExists=/dev/virtio-ports/korvan.agent
	[Service]
	ExecStart=/usr/local/sbin/agent
	KillMode=process
	[Install]
	WantedBy=multi-user.target
	END
    # Not part of a desktop's start, and slow where the processor is emulated.
    chroot "$root" systemctl -q disable apt-daily.timer apt-daily-upgrade.timer strongswan-starter xl2tpd 2>/dev/null || true
    chroot "$root" systemctl -q enable agent systemd-resolved NetworkManager lightdm
    chroot "$root" systemctl -q mask systemd-networkd
    echo virtio_console >>"$in/modules"
}

make_disk() {
    cp "$root"/boot/vmlinuz-* "$folder/kernel"
    cp "$root"/boot/initrd.img-* "$folder/initrd"
    truncate -s 6G "$folder/disk.raw"
    mke2fs -q -t ext4 -F -d "$root" "$folder/disk.raw"
    rm -rf "$root"
}

mkdir -p "$(dirname "$folder")"
{
    make_root
    furnish_root
    make_disk
} >"$folder.log" 2>&1 || { tail -n 20 "$folder.log" >&2; exit 1; }
echo "$recipe" >"$folder/recipe"
echo "$folder"
