#include "helpers/network/Routes.h"

#include "helpers/network/Netlink.h"
#include "names/Names.h"

#include <algorithm>
#include <linux/fib_rules.h>

namespace {

using Address = std::unique_ptr<nl_addr, decltype(&nl_addr_put)>;

/// States of a route or next hop that the kernel tells and does not take.
constexpr unsigned kStateFlags = ~unsigned(RTNH_F_ONLINK | RTNH_F_PERVASIVE);

Address addressOf(const std::string &text)
{
    nl_addr *address = nullptr;
    const bool isAll = text.empty() || text == "0.0.0.0/0"; // to the library another address than the kernel's
    nl_addr_parse(isAll ? "default" : text.c_str(), AF_INET, &address);
    return {address, nl_addr_put};
}

Route clean(rtnl_route *route)
{
    rtnl_route_unset_flags(route, kStateFlags);
    for (int i = 0; i < rtnl_route_get_nnexthops(route); ++i) {
        rtnl_route_nh_unset_flags(rtnl_route_nexthop_n(route, i), kStateFlags);
    }
    return {route, rtnl_route_put};
}

int takeRoute(nl_msg *message, void *routes)
{
    rtnl_route *route = nullptr;
    if (rtnl_route_parse(nlmsg_hdr(message), &route) == 0) {
        static_cast<std::vector<Route> *>(routes)->push_back(clean(route));
    }
    return NL_OK;
}

} // namespace

std::vector<Route> routesOf(int family, unsigned table)
{
    // Not by a cache of the library's: to that, two routes with the same metric are one.
    std::vector<Route> routes;
    const Socket socket = openSocket(NETLINK_ROUTE);
    nl_socket_modify_cb(socket.get(), NL_CB_VALID, NL_CB_CUSTOM, takeRoute, &routes);
    nl_rtgen_request(socket.get(), RTM_GETROUTE, family, NLM_F_DUMP);
    nl_recvmsgs_default(socket.get());
    const auto isElsewhere = [table](const Route &route) { return rtnl_route_get_table(route.get()) != table; };
    routes.erase(std::remove_if(routes.begin(), routes.end(), isElsewhere), routes.end());
    return routes;
}

Route routeTo(const std::string &destination, const std::string &gateway, uint8_t protocol, unsigned metric)
{
    rtnl_route *route = rtnl_route_alloc();
    rtnl_route_set_dst(route, addressOf(destination).get());
    rtnl_route_set_protocol(route, protocol);
    rtnl_route_set_priority(route, metric);
    rtnl_route_set_scope(route, protocol == RTPROT_UNSPEC ? RT_SCOPE_NOWHERE : RT_SCOPE_UNIVERSE);
    if (!gateway.empty()) {
        rtnl_nexthop *hop = rtnl_route_nh_alloc();
        rtnl_route_nh_set_gateway(hop, addressOf(gateway).get());
        rtnl_route_add_nexthop(route, hop);
    }
    return clean(route);
}

Bytes bytesOf(const Route &route)
{
    nl_msg *message = nullptr;
    rtnl_route_build_add_request(route.get(), 0, &message);
    const auto *start = reinterpret_cast<const uint8_t *>(nlmsg_hdr(message));
    Bytes bytes(start, start + nlmsg_hdr(message)->nlmsg_len);
    nlmsg_free(message);
    return bytes;
}

Route readRoute(Bytes bytes)
{
    auto *message = reinterpret_cast<nlmsghdr *>(bytes.data());
    rtnl_route *route = nullptr;
    const bool isWhole = bytes.size() >= NLMSG_HDRLEN && nlmsg_ok(message, int(bytes.size())) != 0;
    return isWhole && rtnl_route_parse(message, &route) == 0 ? clean(route) : nullptr;
}

bool isDefault(const Route &route)
{
    return nl_addr_get_prefixlen(rtnl_route_get_dst(route.get())) == 0 &&
           rtnl_route_get_type(route.get()) == RTN_UNICAST;
}

bool hasSameDestination(const Route &one, const Route &other)
{
    return nl_addr_cmp(rtnl_route_get_dst(one.get()), rtnl_route_get_dst(other.get())) == 0;
}

bool areSameWay(const Route &one, const Route &other)
{
    const int hops = rtnl_route_get_nnexthops(one.get());
    bool same = rtnl_route_get_family(one.get()) == rtnl_route_get_family(other.get()) &&
                rtnl_route_get_priority(one.get()) == rtnl_route_get_priority(other.get()) &&
                rtnl_route_get_nnexthops(other.get()) == hops;
    for (int i = 0; same && i < hops; ++i) {
        same = rtnl_route_nh_compare(rtnl_route_nexthop_n(one.get(), i), rtnl_route_nexthop_n(other.get(), i), ~0U,
                                     0) == 0;
    }
    return same;
}

bool hasWay(const std::vector<Route> &routes, const Route &route)
{
    return std::any_of(routes.begin(), routes.end(), [&](const Route &other) { return areSameWay(route, other); });
}

std::vector<unsigned> linksOf(const Route &route)
{
    std::vector<unsigned> links(size_t(rtnl_route_get_nnexthops(route.get())));
    for (size_t i = 0; i < links.size(); ++i) {
        links[i] = unsigned(rtnl_route_nh_get_ifindex(rtnl_route_nexthop_n(route.get(), int(i))));
    }
    return links;
}

std::string changeRoute(RouteChange change, const Route &route, unsigned table)
{
    rtnl_route_set_table(route.get(), table);
    const int error = change == RouteChange::Delete
                          ? rtnl_route_delete(openSocket(NETLINK_ROUTE).get(), route.get(), 0)
                          : rtnl_route_add(openSocket(NETLINK_ROUTE).get(), route.get(), int(change));
    return error == 0 ? std::string() : nl_geterror(error);
}

void changeMarkRules(int family, bool wanted)
{
    for (const unsigned table : {unsigned(RT_TABLE_MAIN), kTunnelTable}) {
        fib_rule_hdr header = {};
        header.family = uint8_t(family);
        header.action = FR_ACT_TO_TBL;
        nl_msg *rule =
            wanted ? newMessage(RTM_NEWRULE, NLM_F_CREATE | NLM_F_EXCL, header) : newMessage(RTM_DELRULE, 0, header);
        nla_put_u32(rule, FRA_PRIORITY, table == kTunnelTable ? kTunnelTable : kTunnelTable - 1);
        nla_put_u32(rule, FRA_FWMARK, kTunnelMark);
        nla_put_u32(rule, FRA_TABLE, table);
        if (table == RT_TABLE_MAIN) {
            nla_put_u32(rule, FRA_SUPPRESS_IFGROUP, kTunnelGroup);
        }
        nl_send_sync(openSocket(NETLINK_ROUTE).get(), rule); // one that is there already, or gone already, is right
    }
}

void setGroup(unsigned link, unsigned group)
{
    ifinfomsg header = {};
    header.ifi_index = int(link);
    nl_msg *message = newMessage(RTM_SETLINK, 0, header);
    nla_put_u32(message, IFLA_GROUP, group);
    nl_send_sync(openSocket(NETLINK_ROUTE).get(), message);
}
