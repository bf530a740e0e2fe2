#include "helpers/network/Guard.h"

#include "helpers/network/Netlink.h"
#include "helpers/system/Run.h"
#include "names/Names.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <libmnl/libmnl.h>
#include <linux/netfilter.h>
#include <linux/netfilter/nf_tables.h>
#include <linux/netfilter/nfnetlink.h>
#include <map>
#include <memory>
#include <set>
#include <unistd.h>
#include <utility>

namespace {

constexpr char kNft[] = "/usr/sbin/nft";
constexpr char kTable[] = "korvan";

/// The guard's rules, which never change: a policy is what is in their sets. Every packet that leaves passes the last
/// hook of its way, whatever its protocol, sender and route. Packets that come in for OpenVPN get its mark, for the
/// kernel's check of the sender (rp_filter). That looks for their socket and not for their connection: to track those
/// takes time with every packet of the machine.
constexpr char kRules[] = R"nft(
table inet korvan {
    set closed { type nf_proto; }
    set queries { type inet_service; }
    set tunnels { type iface_index; }
    set ordinary { type ipv4_addr; flags interval; }
    set ports { type inet_service; }
    set managers { type uid; }
    chain leaving {
        type filter hook postrouting priority 0; policy drop;
        oif lo tcp dport @ports meta skuid != @managers drop
        oif lo accept
        oif @tunnels accept
        meta mark 19311 accept
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
        iif != @tunnels socket mark 19311 meta mark set 19311
    }
}
)nft";
static_assert(kTunnelMark == 19311);

/// What a set holds: the bytes of an address or a number, and whether a range ends before it.
using Key = std::pair<std::string, bool>;
using Keys = std::set<Key>;

template <typename Number> Key key(Number value, bool isEnd = false)
{
    return {std::string(reinterpret_cast<const char *>(&value), sizeof value), isEnd};
}

int takeKeys(const nlmsghdr *message, void *data)
{
    eachAttribute(message, sizeof(nfgenmsg), [&](const nlattr *list) {
        if (mnl_attr_get_type(list) != NFTA_SET_ELEM_LIST_ELEMENTS) {
            return;
        }
        eachAttribute(list, [&](const nlattr *element) {
            Key key;
            eachAttribute(element, [&](const nlattr *part) {
                if (mnl_attr_get_type(part) == NFTA_SET_ELEM_KEY) {
                    eachAttribute(part, [&](const nlattr *value) { key.first = bytesOf(value); });
                }
                key.second = key.second || mnl_attr_get_type(part) == NFTA_SET_ELEM_FLAGS; // no other flag is given
            });
            static_cast<Keys *>(data)->insert(key);
        });
    });
    return MNL_CB_OK;
}

/// Puts what the set holds into `keys`. 0 or a negative errno value, -ENOENT when there is no such set.
int readSet(const std::string &set, Keys &keys)
{
    const nfgenmsg header = {NFPROTO_INET, NFNETLINK_V0, 0};
    NetlinkRequest request(NFNL_SUBSYS_NFTABLES << 8 | NFT_MSG_GETSETELEM, NLM_F_DUMP, &header, sizeof header);
    request.add(NFTA_SET_ELEM_LIST_TABLE, std::string(kTable, sizeof kTable));
    request.add(NFTA_SET_ELEM_LIST_SET, std::string(set.c_str(), set.size() + 1));
    return request.dump(takeKeys, &keys, NETLINK_NETFILTER);
}

/// Messages to nftables that take effect together or not at all.
class Transaction
{
public:
    Transaction() : m_bytes(262144) { putHeader(NFNL_MSG_BATCH_BEGIN, 0, AF_UNSPEC, NFNL_SUBSYS_NFTABLES); }

    /// Makes the set hold these keys. What stays is left alone: the kernel takes ten milliseconds when something
    /// goes.
    void change(const std::string &set, const Keys &present, const Keys &keys)
    {
        const bool grows = std::includes(keys.begin(), keys.end(), present.begin(), present.end());
        if (!grows) {
            putSet(NFT_MSG_DELSETELEM, set); // without keys it empties the set
        }
        if (grows ? keys.size() > present.size() : !keys.empty()) {
            nlmsghdr *message = putSet(NFT_MSG_NEWSETELEM, set);
            nlattr *list = mnl_attr_nest_start(message, NFTA_SET_ELEM_LIST_ELEMENTS);
            for (const Key &key : keys) {
                if (!grows || present.count(key) == 0) {
                    putElement(message, key);
                }
            }
            mnl_attr_nest_end(message, list);
        }
    }

    void deleteTable() { mnl_attr_put_strz(put(NFT_MSG_DELTABLE, 0), NFTA_TABLE_NAME, kTable); }

    /// 0 or a negative errno value.
    int commit();

private:
    nlmsghdr *putHeader(unsigned type, unsigned flags, uint8_t family, uint16_t resource)
    {
        m_length += m_last != nullptr ? m_last->nlmsg_len : 0;
        m_last = mnl_nlmsg_put_header(m_bytes.data() + m_length);
        m_last->nlmsg_type = uint16_t(type);
        m_last->nlmsg_flags = uint16_t(NLM_F_REQUEST | flags);
        m_last->nlmsg_seq = ++m_sequence;
        auto *header = static_cast<nfgenmsg *>(mnl_nlmsg_put_extra_header(m_last, sizeof(nfgenmsg)));
        header->nfgen_family = family;
        header->res_id = htons(resource);
        return m_last;
    }

    nlmsghdr *put(unsigned type, unsigned flags)
    {
        return putHeader(NFNL_SUBSYS_NFTABLES << 8 | type, flags | NLM_F_ACK, NFPROTO_INET, 0);
    }

    static void putElement(nlmsghdr *message, const Key &key)
    {
        nlattr *element = mnl_attr_nest_start(message, NFTA_LIST_ELEM);
        nlattr *value = mnl_attr_nest_start(message, NFTA_SET_ELEM_KEY);
        mnl_attr_put(message, NFTA_DATA_VALUE, key.first.size(), key.first.data());
        mnl_attr_nest_end(message, value);
        if (key.second) {
            mnl_attr_put_u32(message, NFTA_SET_ELEM_FLAGS, htonl(NFT_SET_ELEM_INTERVAL_END));
        }
        mnl_attr_nest_end(message, element);
    }

    nlmsghdr *putSet(unsigned type, const std::string &set)
    {
        nlmsghdr *message = put(type, type == NFT_MSG_NEWSETELEM ? NLM_F_CREATE : 0);
        mnl_attr_put_strz(message, NFTA_SET_ELEM_LIST_TABLE, kTable);
        mnl_attr_put_strz(message, NFTA_SET_ELEM_LIST_SET, set.c_str());
        return message;
    }

    std::vector<char> m_bytes;
    nlmsghdr *m_last = nullptr;
    size_t m_length = 0;
    unsigned m_sequence = 0;
};

int Transaction::commit()
{
    unsigned answers = m_sequence - 1; // to all but the beginning and the end
    if (answers == 0) {
        return 0;
    }
    putHeader(NFNL_MSG_BATCH_END, 0, AF_UNSPEC, NFNL_SUBSYS_NFTABLES);
    std::unique_ptr<mnl_socket, int (*)(mnl_socket *)> socket(mnl_socket_open2(NETLINK_NETFILTER, SOCK_CLOEXEC),
                                                              mnl_socket_close);
    if (!socket || mnl_socket_bind(socket.get(), 0, MNL_SOCKET_AUTOPID) < 0 ||
        mnl_socket_sendto(socket.get(), m_bytes.data(), m_length + m_last->nlmsg_len) < 0) {
        return -errno;
    }
    std::vector<char> answer(32768);
    while (answers > 0) {
        const ssize_t length = mnl_socket_recvfrom(socket.get(), answer.data(), answer.size());
        if (length <= 0) {
            return -errno;
        }
        auto left = int(length);
        for (const auto *message = reinterpret_cast<const nlmsghdr *>(answer.data()); mnl_nlmsg_ok(message, left);
             message = mnl_nlmsg_next(message, &left), --answers) {
            const auto *error = static_cast<const nlmsgerr *>(mnl_nlmsg_get_payload(message));
            if (message->nlmsg_type == NLMSG_ERROR && error->error != 0) {
                return error->error;
            }
        }
    }
    return 0;
}

/// The ranges as a set takes them: those that touch in one, each with the first address behind it unless it goes to
/// the end of all addresses.
Keys rangeKeys(const std::vector<Subnet> &subnets)
{
    std::map<uint64_t, uint64_t> ranges;
    for (const Subnet &subnet : subnets) {
        const uint64_t size = uint64_t(1) << (32 - subnet.length);
        const uint64_t from = subnet.address & ~(size - 1);
        ranges[from] = std::max(ranges[from], from + size);
    }
    Keys keys;
    uint64_t end = 0;
    for (auto it = ranges.begin(); it != ranges.end();) {
        keys.insert(key(htonl(uint32_t(it->first))));
        for (end = 0; it != ranges.end() && (end == 0 || it->first <= end); ++it) {
            end = std::max(end, it->second);
        }
        if (end <= UINT32_MAX) {
            keys.insert(key(htonl(uint32_t(end)), true));
        }
    }
    return keys;
}

template <typename Numbers, typename Convert> Keys keysOf(const Numbers &numbers, Convert convert)
{
    Keys keys;
    for (const auto number : numbers) {
        keys.insert(key(convert(number)));
    }
    return keys;
}

/// The content of every set in this policy.
std::map<std::string, Keys> setsOf(const Policy &policy)
{
    using Numbers = std::set<unsigned>;
    const auto protocol = [](unsigned number) { return uint8_t(number); };
    const auto port = [](unsigned number) { return htons(uint16_t(number)); };
    const auto plain = [](unsigned number) { return uint32_t(number); };
    return {{"closed", keysOf(policy.closed ? Numbers{NFPROTO_IPV4, NFPROTO_IPV6} : Numbers(), protocol)},
            {"queries", keysOf(policy.keepsQueries ? Numbers{53, 853} : Numbers(), port)},
            {"tunnels", keysOf(policy.tunnels, plain)},
            {"ordinary", rangeKeys(policy.ordinary)},
            {"ports", keysOf(policy.ports, port)},
            {"managers", keysOf(policy.managers, plain)}};
}

int loadSets(const Policy &policy)
{
    Transaction transaction;
    for (const auto &[set, keys] : setsOf(policy)) {
        Keys present;
        const int error = readSet(set, present);
        if (error != 0) {
            return error;
        }
        transaction.change(set, present, keys);
    }
    return transaction.commit();
}

std::string reasonOf(int error)
{
    return error == 0 ? std::string() : std::string("the packet filter: ") + std::strerror(-error);
}

} // namespace

std::string loadGuard(const Policy &policy)
{
    const int error = loadSets(policy);
    if (error != -ENOENT) {
        return reasonOf(error);
    }
    if (access(kNft, X_OK) != 0) {
        return "nft is missing; it is in the package nftables";
    }
    // As long as it is new, the table lets everything pass.
    const RunResult made = runToEnd({kNft, "-f", "-"}, kRules);
    return made.status == 0 ? reasonOf(loadSets(policy)) : made.errors.substr(0, made.errors.find('\n'));
}

std::string removeGuard()
{
    Keys present;
    int error = readSet("closed", present); // to give a transaction up takes the kernel as long as an end
    if (error == 0) {
        Transaction transaction;
        transaction.deleteTable();
        error = transaction.commit();
    }
    return error == -ENOENT ? std::string() : reasonOf(error);
}
