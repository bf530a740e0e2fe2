#include "helpers/tools/RouteTable.h"

#include <algorithm>
#include <net/if.h>
#include <netinet/in.h>

std::vector<TableLine> routingTable()
{
    std::vector<TableLine> lines;
    for (const Route &route : routesOf(AF_INET)) {
        rtnl_nexthop *hop = rtnl_route_nexthop_n(route.get(), 0);
        if (hop == nullptr || rtnl_route_get_type(route.get()) != RTN_UNICAST) {
            continue;
        }
        TableLine line;
        line.route = route;
        char text[INET_ADDRSTRLEN] = "";
        if (nl_addr *gateway = rtnl_route_nh_get_gateway(hop)) {
            line.gateway = nl_addr2str(gateway, text, sizeof text);
        }
        line.link = unsigned(rtnl_route_nh_get_ifindex(hop));
        char name[IF_NAMESIZE] = "";
        line.interface = if_indextoname(line.link, name) != nullptr ? name : "";
        line.metric = rtnl_route_get_priority(route.get());
        lines.push_back(line);
    }
    std::stable_sort(lines.begin(), lines.end(),
                     [](const TableLine &a, const TableLine &b) { return a.metric < b.metric; });
    return lines;
}
