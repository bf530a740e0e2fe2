#!/usr/bin/env bash
# keep-packages.sh ROOT, as a hook of mmdebstrap: the guest keeps the packages that a case removes before Korvan's package
# brings them back, as a source for apt in /var/local/packages; their names stand in "missing" there. What a desktop needs
# anyway stays. And resolvconf, which takes the place of systemd-resolved in a case, in /root.
set -euo pipefail
export APT_CONFIG=$MMDEBSTRAP_APT_CONFIG
in=$1/var/local/packages
mkdir -p "$in"
env -u APT_CONFIG chroot "$1" apt-get -s purge --autoremove openvpn nftables sstp-client network-manager-l2tp 'libqt5core5*' |
    awk '/^(Purg|Remv) / { print $2 }' >"$in/missing"
(cd "$in" && xargs apt-get download -q <missing && dpkg-scanpackages -m . >Packages)
(cd "$1/root" && apt-get download -q resolvconf)
echo 'deb [trusted=yes] file:/var/local/packages ./' >"$in/list"
