#include "helpers/network/Guard.h"

#include "helpers/system/Run.h"
#include "names/Names.h"

#include <unistd.h>

namespace {

/// The guard's rules, which never change. Every packet that leaves passes the last hook of its way, whatever its
/// protocol, sender and route; what a tunnel is busy with comes first. Packets that come in for OpenVPN get its mark,
/// for the kernel's check of the sender (rp_filter). That looks for their socket and not for their connection: to
/// track those takes time with every packet of the machine.
constexpr char kRules[] = R"nft(
table inet korvan {
    set closed { type nf_proto; }
    set queries { type inet_service; }
    set tunnels { type iface_index; }
    set ordinary { type ipv4_addr; flags interval; auto-merge; }
    set ports { type inet_service; }
    set managers { type uid; }
    set senders { type nf_proto; }
    chain leaving {
        type filter hook postrouting priority 0; policy drop;
        oif @tunnels accept
        meta mark 19311 accept
        oif lo tcp dport @ports meta skuid != @managers drop
        oif lo accept
        meta nfproto != @closed accept
        udp sport 68 udp dport 67 accept
        udp sport 546 udp dport 547 accept
        icmpv6 type { nd-router-solicit, nd-neighbor-solicit, nd-neighbor-advert } ip6 hoplimit 255 accept
        meta l4proto { tcp, udp } th dport @queries drop
        ip daddr { 10.0.0.0/8, 172.16.0.0/12, 192.168.0.0/16, 169.254.0.0/16, 224.0.0.0/4, 255.255.255.255 } accept
        ip6 daddr { fc00::/7, fe80::/10, ff00::/8 } accept
        ip daddr @ordinary accept
    }
    chain arriving {
        type filter hook prerouting priority mangle; policy accept;
        meta nfproto @senders socket mark 19311 meta mark set 19311
    }
}
)nft";
static_assert(kTunnelMark == 19311);

constexpr char kNft[] = "/usr/sbin/nft";
constexpr char kLook[] = "list chain inet korvan leaving\n";
constexpr char kRemove[] = "delete table inet korvan\n";
constexpr char kCreate[] = "create table inet korvan\n";

/// Lets nft do this in one transaction. Returns the reason of a failure, or an empty text.
std::string run(const std::string &commands)
{
    if (access(kNft, X_OK) != 0) {
        return "nft is missing; it is in the package nftables";
    }
    const RunResult result = runToEnd({kNft, "-f", "-"}, commands);
    return result.status == 0 ? std::string() : result.errors.substr(0, result.errors.find('\n'));
}

/// What to add to the sets. Nothing where something is to go, which takes the kernel as long as to begin anew.
std::string additions(const Policy &before, Policy policy)
{
    std::string commands;
    for (const auto &[set, present] : before) {
        for (const std::string &each : present) {
            if (policy[set].erase(each) == 0) {
                return {};
            }
        }
    }
    for (const auto &[set, added] : policy) {
        for (const std::string &each : added) {
            commands.append("add element inet korvan ").append(set).append(" { ").append(each).append(" }\n");
        }
    }
    return commands;
}

} // namespace

std::string loadGuard(const Policy &before, const Policy &policy)
{
    const std::string changes = before == policy ? kLook : additions(before, policy);
    if (!before.empty() && !changes.empty() && run(changes).empty()) {
        return {};
    }
    // As long as it is new, the table lets everything pass, which is why its sets are filled with it.
    const std::string anew = kRules + additions({}, policy);
    const std::string reason = run((before.empty() ? kCreate : kRemove) + anew);
    return reason.empty() ? reason : run((before.empty() ? kRemove : kCreate) + anew);
}

std::string removeGuard()
{
    // To ask first is quicker than to be refused.
    return run(kLook).empty() ? run(kRemove) : std::string();
}
