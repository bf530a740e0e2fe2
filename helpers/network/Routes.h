#pragma once

#include <cstdint>
#include <linux/rtnetlink.h>
#include <memory>
#include <netlink/route/route.h>
#include <string>
#include <sys/socket.h>
#include <vector>

using Bytes = std::vector<uint8_t>;
using Route = std::shared_ptr<rtnl_route>;

/// The routes of one table, in the kernel's order.
std::vector<Route> routesOf(int family, unsigned table = RT_TABLE_MAIN);

/// A route to make, to everywhere or to "192.0.2.0/24", through a gateway that may be empty; RTPROT_UNSPEC for one to
/// delete, whoever made it.
Route routeTo(const std::string &destination, const std::string &gateway, uint8_t protocol, unsigned metric = 0);

/// The route as bytes, which readRoute() takes back. No route where there is none in them.
Bytes bytesOf(const Route &route);
Route readRoute(Bytes bytes);

bool isDefault(const Route &route);
bool hasSameDestination(const Route &one, const Route &other);

/// Whether both have the same metric, gateways and interfaces, as copies in several tables have.
bool areSameWay(const Route &one, const Route &other);

bool hasWay(const std::vector<Route> &routes, const Route &route);

/// The route's interfaces, several when it spreads over several uplinks.
std::vector<unsigned> linksOf(const Route &route);

enum class RouteChange {
    Delete = 0,
    Add = NLM_F_CREATE | NLM_F_EXCL,
    Append = NLM_F_CREATE | NLM_F_APPEND,
    Replace = NLM_F_CREATE | NLM_F_REPLACE
};

/// Changes one route of a table. Returns the reason of a failure, or an empty text.
std::string changeRoute(RouteChange change, const Route &route, unsigned table = RT_TABLE_MAIN);

/// Makes or removes the rules that send packets with kTunnelMark on a way of their own: as the main table says, but
/// never into an interface of kTunnelGroup; where that leads nowhere, as kTunnelTable says.
void changeMarkRules(int family, bool wanted);

/// Puts an interface into a group; a tunnel is in kTunnelGroup, others in 0.
void setGroup(unsigned link, unsigned group);
