#!/usr/bin/env bash
# Installs the Debian packages that building, testing and running Korvan need. Packages that are there already are
# left alone, so a second run needs no network. "setup.sh guest" also installs what emulated desktops need.
set -euo pipefail

build=(build-essential cmake ninja-build pkg-config git clang-format clang-tidy
    qtbase5-dev qtmultimedia5-dev qttools5-dev qttools5-dev-tools libqt5x11extras5-dev libxcb1-dev libxcb-randr0-dev
    libarchive-dev libcpp-httplib-dev libnl-route-3-dev libssl-dev nlohmann-json3-dev)
runtime=(openvpn iproute2 iputils-ping nftables network-manager network-manager-l2tp network-manager-pptp
    network-manager-strongswan sstp-client libqt5multimedia5-plugins libqt5svg5 fonts-inter
    fonts-noto-core fonts-noto-cjk qttranslations5-l10n pkexec xdg-utils)
lab=(dnsmasq-base easy-rsa minisign openssl tinyproxy microsocks curl dbus dbus-x11 procps python3 util-linux strace zip
    unzip p7zip-full)
display=(xvfb openbox trayer xdotool imagemagick x11-utils x11-xserver-utils pulseaudio pulseaudio-utils
    at-spi2-core gir1.2-atspi-2.0 python3-gi)
packaging=(appstream debootstrap desktop-file-utils dpkg-dev file lintian)
guest=(dnsmasq-base e2fsprogs imagemagick mmdebstrap qemu-system-x86 qemu-utils tesseract-ocr)
[ "${1:-}" = guest ] || guest=()

missing=()
for package in "${build[@]}" "${runtime[@]}" "${lab[@]}" "${display[@]}" "${packaging[@]}" \
    "${guest[@]}"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "setup: run as root to install: ${missing[*]}" >&2; exit 1; }
    as_root=(sudo)
fi
echo "setup: installing ${missing[*]}"
"${as_root[@]}" apt-get update -q
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
