#include "helpers/network/Settle.h"

#include "names/Names.h"

#include <algorithm>
#include <fstream>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

namespace {

constexpr char kCheckMarks[] = "/proc/sys/net/ipv4/conf/all/src_valid_mark";

std::string readSwitch()
{
    std::string value;
    std::ifstream(kCheckMarks) >> value;
    return value;
}

/// The next ways that a copy of a default route shares with it.
bool isSameWay(const Route &a, const Route &b)
{
    return a.metric == b.metric && a.gateway == b.gateway && a.links == b.links;
}

bool hasWay(const std::vector<Route> &routes, const Route &route)
{
    return std::any_of(routes.begin(), routes.end(), [&](const Route &other) { return isSameWay(route, other); });
}

/// The file is the last tunnel's that brought name servers for it.
void keepNameServerFile(const State &state)
{
    const auto last = std::find_if(state.tunnels.rbegin(), state.tunnels.rend(),
                                   [](const Tunnel &tunnel) { return tunnel.resolver == Resolver::File; });
    if (last == state.tunnels.rend()) {
        restoreNameServerFile();
    } else {
        setNameServerFile(last->servers);
    }
}

/// The ways out of the machine go to the table of OpenVPN's own packets, too.
void keepMarkedRoutes(const State &state, uint8_t family, bool wanted)
{
    std::vector<Route> ways;
    if (wanted) {
        ways = uplinkRoutes(state, family);
        std::copy_if(state.routes.begin(), state.routes.end(), std::back_inserter(ways),
                     [&](const Route &route) { return route.family == family && !hasWay(ways, route); });
    }
    if (family == AF_INET6 && ways.size() > 1) {
        ways.resize(1); // the kernel would make one route of them, which is neither
    }
    const std::vector<Route> present = routesOf(family, kTunnelTable);
    for (const Route &route : present) {
        if (!hasWay(ways, route)) {
            changeRoute(RouteChange::Delete, route, kTunnelTable);
        }
    }
    for (const Route &way : ways) {
        if (!hasWay(present, way)) {
            changeRoute(RouteChange::Append, way, kTunnelTable);
        }
    }
    changeMarkRules(family, wanted);
}

bool needsGuard(const State &state)
{
    return state.isLocked || state.isUndecided || !state.tunnels.empty();
}

} // namespace

void removeEnded(State &state, Decision decision)
{
    for (size_t i = 0; i < state.tunnels.size();) {
        const Tunnel &tunnel = state.tunnels[i];
        if (tunnel.process.lives()) {
            ++i;
            continue;
        }
        if (!tunnel.server.empty()) { // killed, OpenVPN leaves its host route
            changeRoute(RouteChange::Delete, routeTo(tunnel.server, 32, tunnel.gateway, RTPROT_UNSPEC),
                        RT_TABLE_MAIN);
        }
        dropNameServers(tunnel.resolver, tunnel.device);
        state.isUndecided = state.isUndecided || (tunnel.takesAll && tunnel.isEstablished);
        state.tunnels.erase(state.tunnels.begin() + static_cast<ptrdiff_t>(i));
    }
    if (decision == Decision::Taken || state.isLocked) {
        state.isUndecided = false;
    }
}

bool leadsIntoTunnel(const State &state, const Route &route)
{
    const std::set<unsigned> tunnels = policyOf(state).tunnels;
    return !route.links.empty() && std::all_of(route.links.begin(), route.links.end(),
                                               [&](unsigned link) { return tunnels.count(link) > 0; });
}

std::vector<Route> uplinkRoutes(const State &state, uint8_t family)
{
    std::vector<Route> routes = routesOf(family, RT_TABLE_MAIN);
    routes.erase(
        std::remove_if(routes.begin(), routes.end(),
                       [&](const Route &route) { return !route.isDefault() || leadsIntoTunnel(state, route); }),
        routes.end());
    return routes;
}

std::string settle(State &state, Decision decision)
{
    removeEnded(state, decision);
    const bool guarded = needsGuard(state);
    // The kernel looks at a packet's mark when it checks that the sender can be reached (rp_filter), or it drops the
    // answers to marked packets.
    const bool turnsOn = guarded && !state.marksChecked && readSwitch() == "0";
    const bool turnsOff = !guarded && state.marksChecked;
    state.marksChecked = guarded && (state.marksChecked || turnsOn);
    std::string reason = guarded ? storeState(state) : std::string();
    if (reason.empty()) {
        reason = guarded ? loadGuard(policyOf(state)) : removeGuard();
    }
    if (turnsOn || turnsOff) {
        std::ofstream(kCheckMarks) << (turnsOn ? 1 : 0) << std::flush;
    }
    keepMarkedRoutes(state, AF_INET, guarded);
    keepMarkedRoutes(state, AF_INET6, guarded);
    keepNameServerFile(state);
    if (!guarded) {
        const std::string problem = storeState(state);
        reason = reason.empty() ? problem : reason;
    }
    return reason;
}
