#include "helpers/network/Guard.h"

#include "helpers/network/Netlink.h"
#include "helpers/system/Run.h"
#include "names/Names.h"

#include <arpa/inet.h>
#include <linux/netfilter.h>
#include <linux/netfilter/nf_tables.h>
#include <linux/netfilter/nfnetlink.h>
#include <unistd.h>

namespace {

/// The guard's rules, which never change. Every packet that leaves passes the last hook of its way, whatever its
/// protocol, sender and route; what a tunnel is busy with comes first.
constexpr char kRules[] = R"nft(
table inet korvan {
    set closed { type nf_proto; }
    set asked { type inet_service; }
    set ordinary { type ipv4_addr; flags interval; auto-merge; }
    set ports { type inet_service; }
    set managers { type uid; }
    set senders { type nf_proto; }
    chain leaving {
        type filter hook postrouting priority 0; policy drop;
        oifgroup 19311 accept
        meta mark 19311 accept
        oif lo tcp dport @ports meta skuid != @managers drop
        oif lo accept
        meta nfproto != @closed accept
        udp sport 68 udp dport 67 accept
        udp sport 546 udp dport 547 accept
        icmpv6 type { nd-router-solicit, nd-neighbor-solicit, nd-neighbor-advert } ip6 hoplimit 255 accept
        meta l4proto { tcp, udp } th dport { 53, 853 } th dport != @asked drop
        ip daddr { 10.0.0.0/8, 172.16.0.0/12, 192.168.0.0/16, 169.254.0.0/16, 224.0.0.0/4, 255.255.255.255 } accept
        ip6 daddr { fc00::/7, fe80::/10, ff00::/8 } accept
        ip daddr @ordinary accept
    }
}
)nft";

/// For the kernel's check of the sender (rp_filter), only where there is one: packets that come in for OpenVPN get
/// its mark. The rule looks for their socket and not for their connection: to track those takes time with every
/// packet of the machine, as this does with every one that comes in. A socket that takes packets for any address
/// would be found for one that is only forwarded, too.
constexpr char kArriving[] = R"nft(
table inet korvan {
    chain arriving {
        type filter hook prerouting priority mangle; policy accept;
        meta nfproto @senders fib daddr type local socket mark 19311 meta mark set 19311
    }
}
)nft";
static_assert(kTunnelMark == 19311 && kTunnelGroup == 19311);

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

std::string rulesOf(const Policy &policy)
{
    return policy.count("senders") != 0 ? std::string(kRules) + kArriving : kRules;
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

nl_msg *newFilterMessage(int type, int flags, uint8_t family, uint16_t resource)
{
    return newMessage(type, flags, nfgenmsg{family, NFNETLINK_V0, htons(resource)});
}

/// The message that closes the guard.
nl_msg *closing()
{
    nl_msg *message =
        newFilterMessage(NFNL_SUBSYS_NFTABLES << 8 | NFT_MSG_NEWSETELEM, NLM_F_CREATE | NLM_F_ACK, NFPROTO_INET, 0);
    nla_put_string(message, NFTA_SET_ELEM_LIST_TABLE, "korvan");
    nla_put_string(message, NFTA_SET_ELEM_LIST_SET, "closed");
    nlattr *list = nla_nest_start(message, NFTA_SET_ELEM_LIST_ELEMENTS);
    for (const uint8_t family : {NFPROTO_IPV4, NFPROTO_IPV6}) {
        nlattr *element = nla_nest_start(message, NFTA_LIST_ELEM);
        nlattr *key = nla_nest_start(message, NFTA_SET_ELEM_KEY);
        nla_put(message, NFTA_DATA_VALUE, sizeof family, &family);
        nla_nest_end(message, key);
        nla_nest_end(message, element);
    }
    nla_nest_end(message, list);
    return message;
}

/// Closes the guard without nft, whose start takes longer than all else for which a person waits when a tunnel comes.
/// False on a failure.
bool closeQuickly()
{
    const Socket socket = openSocket(NETLINK_NETFILTER);
    nl_socket_disable_seq_check(socket.get());
    std::string batch;
    for (nl_msg *message : {newFilterMessage(NFNL_MSG_BATCH_BEGIN, 0, AF_UNSPEC, NFNL_SUBSYS_NFTABLES), closing(),
                            newFilterMessage(NFNL_MSG_BATCH_END, 0, AF_UNSPEC, NFNL_SUBSYS_NFTABLES)}) {
        nl_complete_msg(socket.get(), message);
        batch.append(reinterpret_cast<const char *>(nlmsg_hdr(message)), nlmsg_hdr(message)->nlmsg_len);
        nlmsg_free(message);
    }
    return nl_sendto(socket.get(), batch.data(), batch.size()) > 0 && nl_wait_for_ack(socket.get()) == 0;
}

} // namespace

std::string loadGuard(const Policy &before, const Policy &policy)
{
    const std::string added = rulesOf(before) == rulesOf(policy) ? additions(before, policy) : std::string();
    const std::string changes = before == policy ? kLook : added;
    const bool closes = changes == additions({}, {{"closed", {"ipv4", "ipv6"}}});
    if (!before.empty() && !changes.empty() && ((closes && closeQuickly()) || run(changes).empty())) {
        return {};
    }
    // As long as it is new, the table lets everything pass, which is why its sets are filled with it.
    const std::string anew = rulesOf(policy) + additions({}, policy);
    const std::string reason = run((before.empty() ? kCreate : kRemove) + anew);
    return reason.empty() ? reason : run((before.empty() ? kRemove : kCreate) + anew);
}

std::string removeGuard()
{
    // To ask first is quicker than to be refused.
    return run(kLook).empty() ? run(kRemove) : std::string();
}
