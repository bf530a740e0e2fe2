#include "helpers/network/Netlink.h"

#include "names/Names.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <linux/fib_rules.h>
#include <linux/rtnetlink.h>
#include <memory>
#include <net/if.h>

namespace {

using Socket = std::unique_ptr<mnl_socket, int (*)(mnl_socket *)>;

Socket openSocket(int bus)
{
    Socket socket(mnl_socket_open2(bus, SOCK_CLOEXEC), mnl_socket_close);
    if (socket && mnl_socket_bind(socket.get(), 0, MNL_SOCKET_AUTOPID) < 0) {
        socket.reset();
    }
    return socket;
}

/// Longer than any message here: a route's text in the journal has a limit of its own.
constexpr size_t kLongest = 8192;

/// States of a next hop that the kernel tells and does not take.
constexpr unsigned kStateFlags = ~unsigned(RTNH_F_ONLINK | RTNH_F_PERVASIVE);

/// Takes the interfaces from the next hops, and their states off them.
std::string cleanNextHops(std::string hops, std::vector<unsigned> &links)
{
    for (size_t at = 0; at + sizeof(rtnexthop) <= hops.size();) {
        rtnexthop hop = {};
        std::memcpy(&hop, hops.data() + at, sizeof hop);
        if (hop.rtnh_len < sizeof hop) {
            break;
        }
        links.push_back(unsigned(hop.rtnh_ifindex));
        hop.rtnh_flags = uint8_t(hop.rtnh_flags & ~kStateFlags);
        std::memcpy(hops.data() + at, &hop, sizeof hop);
        at += RTNH_ALIGN(hop.rtnh_len);
    }
    return hops;
}

void putAttribute(std::string &message, const nlattr *original, const std::string &payload)
{
    message.append(reinterpret_cast<const char *>(original), MNL_ATTR_HDRLEN).append(payload);
    message.resize(MNL_ALIGN(message.size()));
}

uint32_t number(const std::string &bytes)
{
    uint32_t value = 0;
    std::memcpy(&value, bytes.data(), std::min(sizeof value, bytes.size()));
    return value;
}

/// Takes one attribute of a route in.
void takeAttribute(Route &route, const nlattr *attribute, bool hasObject)
{
    std::string payload = bytesOf(attribute);
    const int type = mnl_attr_get_type(attribute);
    switch (type) {
    case RTA_TABLE:
        route.table = number(payload);
        return;
    case RTA_CACHEINFO:
        return;
    case RTA_PRIORITY:
        route.metric = number(payload);
        break;
    case RTA_DST:
        route.destination = payload;
        break;
    case RTA_GATEWAY:
        route.gateway = payload;
        break;
    case RTA_OIF:
        route.links.push_back(number(payload));
        break;
    case RTA_MULTIPATH:
        payload = cleanNextHops(payload, route.links);
        break;
    default:
        break;
    }
    // A next hop object's gateway and interface are told beside its number, but only the number is taken.
    if (!hasObject || (type != RTA_OIF && type != RTA_GATEWAY && type != RTA_VIA && type != RTA_MULTIPATH)) {
        putAttribute(route.message, attribute, payload);
    }
}

Route readRoute(const rtmsg &header, const void *attributes, size_t length)
{
    Route route;
    route.family = header.rtm_family;
    route.prefix = header.rtm_dst_len;
    route.type = header.rtm_type;
    route.protocol = header.rtm_protocol;
    route.table = header.rtm_table;
    rtmsg clean = header;
    clean.rtm_table = RT_TABLE_UNSPEC;
    clean.rtm_flags &= ~kStateFlags;
    route.message.assign(reinterpret_cast<const char *>(&clean), sizeof clean);
    bool hasObject = false;
    eachAttribute(attributes, length,
                  [&](const nlattr *a) { hasObject = hasObject || mnl_attr_get_type(a) == RTA_NH_ID; });
    eachAttribute(attributes, length, [&](const nlattr *a) { takeAttribute(route, a, hasObject); });
    return route;
}

int takeRoute(const nlmsghdr *message, void *data)
{
    rtmsg header = {};
    std::memcpy(&header, mnl_nlmsg_get_payload(message), sizeof header);
    if (message->nlmsg_type == RTM_NEWROUTE && (header.rtm_flags & RTM_F_CLONED) == 0) {
        static_cast<std::vector<Route> *>(data)->push_back(
            readRoute(header, mnl_nlmsg_get_payload_offset(message, sizeof header),
                      mnl_nlmsg_get_payload_len(message) - MNL_ALIGN(sizeof header)));
    }
    return MNL_CB_OK;
}

int takeLink(const nlmsghdr *message, void *data)
{
    ifinfomsg header = {};
    std::memcpy(&header, mnl_nlmsg_get_payload(message), sizeof header);
    static_cast<std::vector<unsigned> *>(data)->push_back(unsigned(header.ifi_index));
    return MNL_CB_OK;
}

void changeMarkRule(uint8_t family, bool wanted, unsigned table, unsigned priority)
{
    fib_rule_hdr header = {};
    header.family = family;
    header.action = FR_ACT_TO_TBL;
    NetlinkRequest rule(wanted ? RTM_NEWRULE : RTM_DELRULE, wanted ? NLM_F_CREATE | NLM_F_EXCL : 0, &header,
                        sizeof header);
    rule.add(FRA_PRIORITY, priority);
    rule.add(FRA_FWMARK, kTunnelMark);
    rule.add(FRA_TABLE, table);
    if (table == RT_TABLE_MAIN) {
        rule.add(FRA_SUPPRESS_IFGROUP, kTunnelGroup);
    }
    rule.send(); // one that is there already, or gone already, is right
}

} // namespace

std::string bytesOf(const nlattr *attribute)
{
    return {static_cast<const char *>(mnl_attr_get_payload(attribute)), mnl_attr_get_payload_len(attribute)};
}

NetlinkRequest::NetlinkRequest(unsigned type, unsigned flags, const void *header, size_t size) : m_bytes(kLongest)
{
    nlmsghdr *start = mnl_nlmsg_put_header(m_bytes.data());
    start->nlmsg_type = uint16_t(type);
    start->nlmsg_flags = uint16_t(NLM_F_REQUEST | flags);
    start->nlmsg_seq = 1;
    std::memcpy(mnl_nlmsg_put_extra_header(start, size), header, size);
}

void NetlinkRequest::addRaw(const std::string &attributes)
{
    std::memcpy(mnl_nlmsg_get_payload_tail(message()), attributes.data(), attributes.size());
    message()->nlmsg_len += uint32_t(MNL_ALIGN(attributes.size()));
}

int NetlinkRequest::send()
{
    message()->nlmsg_flags |= NLM_F_ACK;
    return dump(nullptr, nullptr);
}

int NetlinkRequest::dump(mnl_cb_t take, void *data, int bus)
{
    const Socket socket = openSocket(bus);
    if (!socket || mnl_socket_sendto(socket.get(), message(), message()->nlmsg_len) < 0) {
        return -errno;
    }
    std::vector<char> answer(32768);
    int state = MNL_CB_OK;
    while (state > MNL_CB_STOP) {
        const ssize_t length = mnl_socket_recvfrom(socket.get(), answer.data(), answer.size());
        if (length < 0) {
            return -errno;
        }
        state = mnl_cb_run(answer.data(), size_t(length), 1, mnl_socket_get_portid(socket.get()), take, data);
    }
    return state < 0 ? -errno : 0;
}

bool Route::isDefault() const
{
    return prefix == 0 && type == RTN_UNICAST;
}

std::vector<Route> routesOf(uint8_t family, unsigned table)
{
    rtmsg header = {};
    header.rtm_family = family;
    std::vector<Route> routes;
    NetlinkRequest(RTM_GETROUTE, NLM_F_DUMP, &header, sizeof header).dump(takeRoute, &routes);
    routes.erase(std::remove_if(routes.begin(), routes.end(),
                                [&](const Route &route) { return route.table != table || route.family != family; }),
                 routes.end());
    return routes;
}

static void putNumber(std::string &message, uint16_t type, uint32_t value)
{
    const nlattr attribute = {uint16_t(MNL_ATTR_HDRLEN + sizeof value), type};
    putAttribute(message, &attribute, std::string(reinterpret_cast<const char *>(&value), sizeof value));
}

static void putAddress(std::string &message, uint16_t type, const std::string &text)
{
    in_addr address = {};
    if (inet_pton(AF_INET, text.c_str(), &address) == 1) {
        putNumber(message, type, address.s_addr);
    }
}

Route routeTo(const std::string &destination, uint8_t prefix, const std::string &gateway, uint8_t protocol,
              unsigned metric)
{
    rtmsg header = {};
    header.rtm_family = AF_INET;
    header.rtm_dst_len = prefix;
    header.rtm_type = RTN_UNICAST;
    header.rtm_protocol = protocol;
    header.rtm_scope = protocol == RTPROT_UNSPEC ? RT_SCOPE_NOWHERE : RT_SCOPE_UNIVERSE;
    std::string message(reinterpret_cast<const char *>(&header), sizeof header);
    if (prefix > 0) {
        putAddress(message, RTA_DST, destination);
    }
    putAddress(message, RTA_GATEWAY, gateway);
    if (metric != 0) {
        putNumber(message, RTA_PRIORITY, metric);
    }
    return readRoute(message).value_or(Route());
}

std::optional<Route> readRoute(const std::string &message)
{
    rtmsg header = {};
    if (message.size() < sizeof header || message.size() > 4096) {
        return {};
    }
    std::memcpy(&header, message.data(), sizeof header);
    // The attributes need their alignment.
    std::vector<uint64_t> aligned(message.size() / sizeof(uint64_t) + 1);
    std::memcpy(aligned.data(), message.data() + sizeof header, message.size() - sizeof header);
    return readRoute(header, aligned.data(), message.size() - sizeof header);
}

int changeRoute(RouteChange change, const Route &route, unsigned table)
{
    rtmsg header = {};
    std::memcpy(&header, route.message.data(), sizeof header);
    unsigned flags = 0;
    switch (change) {
    case RouteChange::Add:
        flags = NLM_F_CREATE | NLM_F_EXCL;
        break;
    case RouteChange::Append:
        flags = NLM_F_CREATE | NLM_F_APPEND;
        break;
    case RouteChange::Replace:
        flags = NLM_F_CREATE | NLM_F_REPLACE;
        break;
    case RouteChange::Delete:
        break;
    }
    NetlinkRequest request(change == RouteChange::Delete ? RTM_DELROUTE : RTM_NEWROUTE, flags, &header,
                           sizeof header);
    request.addRaw(route.message.substr(sizeof header));
    request.add(RTA_TABLE, table);
    return request.send();
}

void changeMarkRules(uint8_t family, bool wanted)
{
    changeMarkRule(family, wanted, RT_TABLE_MAIN, kTunnelTable - 1);
    changeMarkRule(family, wanted, kTunnelTable, kTunnelTable);
}

int joinTunnelGroup(unsigned link)
{
    ifinfomsg header = {};
    header.ifi_index = int(link);
    NetlinkRequest request(RTM_SETLINK, 0, &header, sizeof header);
    request.add(IFLA_GROUP, kTunnelGroup);
    return request.send();
}

std::vector<unsigned> allLinks()
{
    const ifinfomsg header = {};
    std::vector<unsigned> links;
    NetlinkRequest(RTM_GETLINK, NLM_F_DUMP, &header, sizeof header).dump(takeLink, &links);
    return links;
}
