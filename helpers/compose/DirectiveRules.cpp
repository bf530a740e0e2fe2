#include "helpers/compose/DirectiveRules.h"

namespace {

struct Group
{
    Action action;
    std::string_view reason;
    std::string_view names; ///< separated by single blanks
};

constexpr Group kGroups[] = {
    {Action::Pass, "",
     "client pull tls-client mode dev dev-type topology tun-ipv6 disable-dco lladdr txqueuelen ip-remote-hint"},
    {Action::Pass, "",
     "remote remote-random remote-random-hostname proto proto-force port rport lport local bind bind-dev nobind "
     "float "
     "multihome resolv-retry preresolve connect-retry connect-retry-max connect-timeout server-poll-timeout "
     "explicit-exit-notify connection http-proxy http-proxy-option http-proxy-user-pass "
     "http-proxy-retry http-proxy-timeout socks-proxy socks-proxy-retry"},
    {Action::Pass, "",
     "ca capath cert extra-certs key pkcs12 dh crl-verify tls-auth tls-crypt tls-crypt-v2 key-direction secret "
     "auth-user-pass auth-nocache auth-token auth-token-user verify-x509-name verify-hash peer-fingerprint "
     "remote-cert-tls remote-cert-ku remote-cert-eku ns-cert-type tls-remote x509-track x509-username-field "
     "askpass push-peer-info"},
    {Action::Pass, "",
     "cipher data-ciphers data-ciphers-fallback ncp-ciphers auth prng tls-cipher tls-ciphersuites tls-groups "
     "ecdh-curve tls-version-min tls-version-max tls-cert-profile tls-timeout tls-exit hand-window tran-window "
     "reneg-sec reneg-bytes reneg-pkts single-session replay-window no-replay mute-replay-warnings key-derivation "
     "keying-material-exporter force-tls-key-material-export compat-mode protocol-flags"},
    {Action::Pass, "",
     "comp-lzo comp-noadapt compress allow-compression tun-mtu tun-mtu-extra tun-mtu-max link-mtu udp-mtu mssfix "
     "fragment mtu-disc mtu-test max-packet-size sndbuf rcvbuf socket-flags tcp-nodelay fast-io shaper passtos "
     "tcp-queue-limit bcast-buffers nice mlock disable-occ"},
    {Action::Pass, "",
     "ifconfig ifconfig-ipv6 ifconfig-nowarn route route-ipv6 route-gateway route-ipv6-gateway route-metric "
     "route-delay route-nopull max-routes redirect-gateway redirect-private allow-pull-fqdn "
     "allow-recursive-routing block-ipv6 client-nat pull-filter dhcp-option dns"},
    {Action::Pass, "",
     "keepalive ping ping-restart ping-exit ping-timer-rem inactive session-timeout persist-tun persist-key "
     "persist-local-ip persist-remote-ip remap-usr1 suppress-timestamps status-version ignore-unknown-option"},

    {Action::LeaveOut, "the scripts of a profile are not run",
     "up down route-up route-pre-down ipchange tls-verify auth-user-pass-verify client-connect client-disconnect "
     "client-crresponse learn-address tls-crypt-v2-verify dns-updown script-security"},
    {Action::LeaveOut, "it serves only the scripts of a profile, which are not run",
     "up-delay up-restart down-pre route-noexec ifconfig-noexec setenv setenv-safe"},
    {Action::LeaveOut, "OpenVPN keeps the account that can restore the routes", "user group setcon"},
    {Action::LeaveOut, "it is for other platforms",
     "allow-nonadmin block-outside-dns cryptoapicert dhcp-internal dhcp-pre-release dhcp-release dhcp-renew ip-win32 "
     "msg-channel pause-exit register-dns route-method service show-adapters show-net show-net-up tap-sleep "
     "win-sys windows-driver"},
    {Action::LeaveOut, "this OpenVPN does not know it",
     "compat-names no-name-remapping key-method keysize ncp-disable no-iv tun-max-mtu use-prediction-resistance"},
    {Action::LeaveOut, "the log stays where it is read",
     "echo parameter syslog errors-to-stderr machine-readable-output"},
    {Action::LeaveOut, "nobody can be asked a second time", "auth-retry"},
    {Action::LeaveOut, "the way out of the machine is not a profile's to choose", "mark"},
    {Action::Replace, "", "verb mute"},

    {Action::Refuse, "it loads code",
     "plugin engine providers pkcs11-providers pkcs11-id pkcs11-id-management pkcs11-cert-private pkcs11-pin-cache "
     "pkcs11-private-mode pkcs11-protected-authentication"},
    {Action::Refuse, "it writes files",
     "log log-append status writepid tls-export-cert replay-persist memstats ifconfig-pool-persist genkey tmp-dir"},
    {Action::Refuse, "it opens OpenVPN to control from outside",
     "management management-client management-client-auth management-client-group management-client-pf "
     "management-client-user management-external-cert management-external-key management-forget-disconnect "
     "management-hold management-log-cache management-query-passwords management-query-proxy "
     "management-query-remote management-signal management-up-down"},
    {Action::Refuse, "it leaves the configuration folder", "config cd chroot client-config-dir"},
    {Action::Refuse, "it takes OpenVPN out of Korvan's sight", "daemon inetd"},
    {Action::Refuse, "it replaces a part of the system", "iproute dev-node mktun rmtun"},
    {Action::Refuse, "it asks a question that can not be answered here", "static-challenge"},
};

struct FileWord
{
    std::string_view name;
    size_t word;
    FileKind kind;
};

constexpr FileWord kFileWords[] = {
    {"ca", 1, FileKind::File},
    {"capath", 1, FileKind::Folder},
    {"cert", 1, FileKind::File},
    {"extra-certs", 1, FileKind::File},
    {"key", 1, FileKind::File},
    {"pkcs12", 1, FileKind::File},
    {"dh", 1, FileKind::File},
    {"crl-verify", 1, FileKind::File},
    {"tls-auth", 1, FileKind::File},
    {"tls-crypt", 1, FileKind::File},
    {"tls-crypt-v2", 1, FileKind::File},
    {"secret", 1, FileKind::File},
    {"askpass", 1, FileKind::File},
    {"auth-user-pass", 1, FileKind::Credentials},
    {"http-proxy-user-pass", 1, FileKind::Credentials},
    {"http-proxy", 3, FileKind::Credentials},
    {"socks-proxy", 3, FileKind::Credentials},
};

constexpr std::string_view kBlocks = "ca cert extra-certs key pkcs12 dh crl-verify tls-auth tls-crypt tls-crypt-v2 "
                                     "secret auth-user-pass http-proxy-user-pass verify-hash peer-fingerprint "
                                     "connection";

bool listHas(std::string_view list, std::string_view name)
{
    while (!list.empty()) {
        const size_t end = list.find(' ');
        if (list.substr(0, end) == name) {
            return true;
        }
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
    }
    return false;
}

} // namespace

DirectiveRule ruleFor(std::string_view name)
{
    DirectiveRule rule;
    for (const Group &group : kGroups) {
        if (listHas(group.names, name)) {
            rule.action = group.action;
            rule.reason = group.reason;
        }
    }
    for (const FileWord &file : kFileWords) {
        if (file.name == name) {
            rule.fileWord = file.word;
            rule.fileKind = file.kind;
        }
    }
    rule.block = listHas(kBlocks, name);
    return rule;
}
