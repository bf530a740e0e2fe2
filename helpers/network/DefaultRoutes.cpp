#include "helpers/network/Network.h"
#include "helpers/network/Settle.h"
#include "helpers/system/Checks.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <linux/rtnetlink.h>

namespace {

std::string failure(const std::string &what, int error)
{
    return "can not " + what + ": " + std::strerror(-error);
}

std::string defaultRouteThrough(const std::string &gateway)
{
    return "the default route through " + gateway;
}

/// What has come with a system VPN service is a tunnel; what was there before it is none.
void findServiceLinks(State &state)
{
    if (state.uplinks.empty()) {
        return;
    }
    for (const unsigned link : allLinks()) {
        if (std::find(state.uplinks.begin(), state.uplinks.end(), link) == state.uplinks.end()) {
            state.serviceLinks.push_back(link);
        }
    }
    state.uplinks.clear();
}

/// New routes go in front: where an interface got another one since, it is to win.
void noteRoutes(State &state, const std::vector<Route> &routes)
{
    for (auto it = routes.rbegin(); it != routes.rend(); ++it) {
        state.routes.erase(std::remove(state.routes.begin(), state.routes.end(), *it), state.routes.end());
        state.routes.insert(state.routes.begin(), *it);
    }
}

bool keepsOthersOut(const Process &owner, const Process &caller)
{
    return owner.number != 0 && owner.number != caller.number && owner.lives();
}

} // namespace

Outcome lockNetwork(const std::string &gateway, const Process &owner)
{
    Held held;
    State &state = held.state;
    if (!state.problem.empty()) {
        return {false, {state.problem}};
    }
    if (keepsOthersOut(state.owner, owner)) {
        return {false, {"another Korvan, process " + std::to_string(state.owner.number) + ", has locked it"}};
    }
    const std::string gatewayBytes = routeTo({}, 0, gateway, RTPROT_BOOT).gateway;
    findServiceLinks(state);
    std::vector<Route> routes = routesOf(AF_INET, RT_TABLE_MAIN);
    routes.erase(std::remove_if(routes.begin(), routes.end(),
                                [&](const Route &route) {
                                    const bool isNamed = !gatewayBytes.empty() && route.gateway == gatewayBytes;
                                    return !route.isDefault() || (leadsIntoTunnel(state, route) && !isNamed);
                                }),
                 routes.end());
    state.isLocked = true;
    state.owner = owner;
    noteRoutes(state, routes);
    const std::string reason = settle(state, Decision::Taken);
    Outcome outcome{reason.empty(), {}};
    if (!outcome.done) {
        outcome.notes.push_back(reason);
    }
    for (const Route &route : routes) {
        const int error = changeRoute(RouteChange::Delete, route, RT_TABLE_MAIN);
        if (error != 0 && error != -ESRCH) {
            outcome = {false, {failure("delete a default route", error)}};
        }
    }
    return outcome;
}

Outcome unlockNetwork(const std::string &gateway, const Process &caller)
{
    Held held;
    State &state = held.state;
    if (keepsOthersOut(state.owner, caller)) {
        return {false, {"another Korvan, process " + std::to_string(state.owner.number) + ", keeps it locked"}};
    }
    Outcome outcome{true, {}};
    if (!state.problem.empty()) {
        outcome.notes.push_back(state.problem);
    }
    const bool wasLocked = state.isLocked;
    // What can not come back belongs to a network that is gone.
    for (const Route &route : state.routes) {
        changeRoute(RouteChange::Append, route, RT_TABLE_MAIN);
    }
    if (uplinkRoutes(state, AF_INET).empty() && (isIpv4(gateway) || !wasLocked)) {
        const int error = isIpv4(gateway)
                              ? changeRoute(RouteChange::Add, routeTo({}, 0, gateway, RTPROT_BOOT), RT_TABLE_MAIN)
                              : -EINVAL;
        if (error != 0 && !wasLocked) {
            outcome = {false,
                       {isIpv4(gateway)
                            ? failure("add " + defaultRouteThrough(gateway), error)
                            : "no deleted route to restore, and \"" + gateway + "\" is no gateway address"}};
        }
    }
    state.isLocked = false;
    state.owner = {};
    state.routes.clear();
    state.uplinks.clear();
    state.serviceLinks.clear();
    state.services.clear();
    const std::string reason = settle(state, Decision::Taken);
    if (!reason.empty()) {
        outcome.notes.push_back(reason);
    }
    return outcome;
}

Outcome changeDefaultRoute(const std::string &gateway)
{
    Held held;
    const std::vector<Route> routes = routesOf(AF_INET, RT_TABLE_MAIN);
    const auto current = std::find_if(routes.begin(), routes.end(), [](const Route &r) { return r.isDefault(); });
    if (current == routes.end()) {
        return {false, {"there is no default route to change"}};
    }
    const Route route = routeTo({}, 0, gateway, current->protocol, current->metric);
    const int error = changeRoute(RouteChange::Replace, route, RT_TABLE_MAIN);
    return {error == 0, error == 0 ? std::vector<std::string>()
                                   : std::vector{failure("make " + defaultRouteThrough(gateway), error)}};
}

Outcome changeOrdinaryRoute(RouteChange change, const Subnet &destination, const std::string &gateway)
{
    in_addr address = {};
    address.s_addr = htonl(destination.address);
    char text[INET_ADDRSTRLEN] = "";
    inet_ntop(AF_INET, &address, text, sizeof text);
    const uint8_t protocol = change == RouteChange::Delete ? RTPROT_UNSPEC : RTPROT_BOOT;
    const int error =
        changeRoute(change, routeTo(text, uint8_t(destination.length), gateway, protocol), RT_TABLE_MAIN);
    const std::string what = std::string(change == RouteChange::Delete ? "delete " : "add ") + text + "/" +
                             std::to_string(destination.length) + (gateway.empty() ? "" : " via " + gateway);
    return {error == 0, error == 0 ? std::vector<std::string>() : std::vector{failure(what, error)}};
}
