#pragma once

#include "helpers/tools/RouteJournal.h"

/// The interfaces of these routes on which the kernel must be told to look at a packet's mark when it checks that the
/// sender can be reached (rp_filter), because otherwise it drops the answers to marked packets.
std::set<std::string> markSwitchesFor(const std::vector<RouteWords> &routes);

/// Keeps a way out for the tunnel's own packets while the default routes are away: the journal's routes and the
/// neighbours without a gateway go to a table that only marked packets use. IPv6 is blocked, tunnels and marked
/// packets excepted. Returns a line for each thing that could not be done. Repeating it changes nothing.
std::vector<std::string> openMarkedWay(const RouteJournal &journal, const std::vector<RouteWords> &mainTable);

/// Undoes openMarkedWay(), as far as it was done.
void closeMarkedWay(const RouteJournal &journal);
