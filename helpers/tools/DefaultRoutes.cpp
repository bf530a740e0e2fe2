#include "helpers/tools/DefaultRoutes.h"
#include "helpers/system/Journal.h"
#include "helpers/tools/IpRoute.h"
#include "helpers/tools/KernelRoutes.h"
#include "helpers/tools/MarkedWay.h"
#include "helpers/tools/RouteJournal.h"

#include <algorithm>
#include <net/if.h>

namespace {

constexpr char kLockName[] = "route.lock";

std::vector<RouteWords> routesToDelete(const std::vector<RouteWords> &table, const std::string &gateway)
{
    std::vector<RouteWords> chosen;
    for (const RouteWords &route : table) {
        const std::vector<std::string> gateways = valuesAfter(route, "via");
        const bool named = std::find(gateways.begin(), gateways.end(), gateway) != gateways.end();
        if (isDefaultRoute(route) && (named || !leadsIntoTunnel(route))) {
            chosen.push_back(route);
        }
    }
    return chosen;
}

std::string failure(const char *what, const RouteWords &route, const std::string &reason)
{
    return std::string("can not ") + what + " \"" + joinWords(route) + "\": " + reason;
}

/// Puts one route back; returns what hindered it, or an empty text.
std::string restoreRoute(const RouteWords &route)
{
    const std::string reason = changeRoute("add", route);
    if (reason.empty() || reason == kAlreadyThere) {
        return {};
    }
    for (const std::string &interface : valuesAfter(route, "dev")) {
        if (if_nametoindex(interface.c_str()) == 0) {
            return failure("restore", route, "interface " + interface + " is gone");
        }
    }
    return failure("restore", route, reason);
}

RouteOutcome takeAway(RouteJournal &journal, const std::string &gateway)
{
    const std::vector<RouteWords> table = mainTable();
    const std::vector<RouteWords> routes = routesToDelete(table, gateway);
    if (routes.empty() && journal.routes.empty()) {
        return {false, {"there is no default route to delete"}};
    }
    if (journal.add(routes, markSwitchesFor(routes))) {
        const std::string reason = storeRouteJournal(journal);
        if (!reason.empty()) {
            return {false, {reason}};
        }
    }
    std::vector<std::string> notes = openMarkedWay(journal, table);
    for (const RouteWords &route : routes) {
        const std::string reason = changeRoute("del", route);
        if (!reason.empty()) {
            notes.push_back(failure("delete", route, reason));
        }
    }
    return {notes.empty(), notes};
}

} // namespace

RouteOutcome deleteDefaultRoutes(const std::string &gateway)
{
    const JournalLock lock(kLockName);
    RouteJournal journal = loadRouteJournal();
    return journal.problem.empty() ? takeAway(journal, gateway) : RouteOutcome{false, {journal.problem}};
}

void keepDefaultRoutesAway()
{
    const JournalLock lock(kLockName);
    RouteJournal journal = loadRouteJournal();
    if (!journal.routes.empty()) {
        takeAway(journal, {});
    }
}

RouteOutcome restoreDefaultRoutes(const std::string &gateway)
{
    const JournalLock lock(kLockName);
    const RouteJournal journal = loadRouteJournal();
    RouteOutcome outcome;
    if (!journal.problem.empty()) {
        outcome.notes.push_back(journal.problem);
    }
    for (const RouteWords &route : journal.routes) {
        const std::string hindrance = restoreRoute(route);
        if (!hindrance.empty()) {
            outcome.notes.push_back(hindrance);
        }
    }
    closeMarkedWay(journal);

    if (isIpv4Address(gateway)) {
        const RouteWords route = {"default", "via", gateway};
        const std::string reason = hasUplinkRoute() ? std::string() : changeRoute("add", route);
        if (!reason.empty()) {
            outcome.notes.push_back(failure("add", route, reason));
        }
    } else if (journal.routes.empty()) {
        outcome.notes.push_back("no deleted route to restore, and \"" + gateway + "\" is no gateway address");
        return outcome;
    }
    outcome.done = outcome.notes.empty() || hasUplinkRoute();
    // A route that failed is kept for another try only while the machine is without any.
    const std::string reason = outcome.done && journal.problem.empty() ? removeRouteJournal() : std::string();
    if (!reason.empty()) {
        outcome.notes.push_back(reason);
    }
    return outcome;
}

RouteOutcome changeDefaultRoute(const std::string &gateway)
{
    const JournalLock lock(kLockName);
    const std::vector<RouteWords> table = mainTable();
    const auto current = std::find_if(table.begin(), table.end(), isDefaultRoute);
    if (current == table.end()) {
        return {false, {"there is no default route to change"}};
    }
    RouteWords route = {"default", "via", gateway};
    for (const char *key : {"proto", "metric"}) {
        for (const std::string &value : valuesAfter(*current, key)) {
            route.insert(route.end(), {key, value});
        }
    }
    const std::string reason = changeRoute("replace", route);
    return {reason.empty(),
            reason.empty() ? std::vector<std::string>() : std::vector{failure("make", route, reason)}};
}
