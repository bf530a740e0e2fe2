# shellcheck shell=bash
# The Debian package of this build as a file; clean-system.sh installs it.

case_nothing_to_complain_of() {
    local build=${bundle%/Korvan.app/*} state depends program
    mkdir /run/package
    cd /run/package || return
    touch korvan_2.0.0_amd64.deb # of an older version
    quietly cpack -G DEB --config "$build/CPackConfig.cmake"
    mv korvan_*.deb korvan.deb && dpkg-deb -x korvan.deb unpacked
    # The client may have run from the build's bundle, and the package must not bring anybody's login along.
    # shellcheck source=/dev/null
    . "$build/names/names.sh"
    # shellcheck disable=SC2154
    state="^./(${state_kept// /|}|${state_passing// /|})(/|\$)"
    is '' diff <(files "$bundle" | grep -vE "$state") <(files unpacked/opt/korvan/Korvan.app/Contents/MacOS)
    # Programs that run as root.
    for program in broker compose network; do
        readelf -dsW "unpacked/opt/korvan/Korvan.app/Contents/MacOS/$program" >/run/elf
        grep -q BIND_NOW /run/elf && grep -q __stack_chk_fail /run/elf && grep -q '[a-z]_chk@' /run/elf ||
            echo "$program is not hardened"
    done
    # Those that the package's life does not run.
    depends=", $(dpkg-deb -f korvan.deb Depends),"
    for program in iputils-ping network-manager network-manager-l2tp sstp-client; do
        [[ $depends == *", $program,"* ]] || echo "does not depend on $program"
    done
    quietly lintian --fail-on error,warning --allow-root korvan.deb
    quietly desktop-file-validate unpacked/usr/share/applications/korvan.desktop
    quietly appstreamcli validate-tree --no-net unpacked
}
quietly() { "$@" >/run/said 2>&1 || { echo "$* says:"; cat /run/said; }; }
files() { (cd "$1" && find . -type f | sort); }
