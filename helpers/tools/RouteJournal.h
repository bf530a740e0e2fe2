#pragma once

#include "helpers/tools/IpRoute.h"

#include <set>
#include <string>
#include <vector>

/// What lock-down took away and must put back.
struct RouteJournal
{
    std::vector<RouteWords> routes;     ///< in the order in which they are put back
    std::set<std::string> markSwitches; ///< interfaces whose src_valid_mark was switched on
    std::string problem;                ///< set when a journal exists and can not be believed

    /// Adds what is not in it yet. New routes go in front: where an interface got another one since, it is to win.
    /// Returns whether anything was new.
    bool add(const std::vector<RouteWords> &newRoutes, const std::set<std::string> &newSwitches);
};

/// The journal, empty when there is none.
RouteJournal loadRouteJournal();

/// Writes the journal; returns the reason of a failure, or an empty text.
std::string storeRouteJournal(const RouteJournal &journal);

/// Removes the journal; returns the reason of a failure, or an empty text.
std::string removeRouteJournal();
