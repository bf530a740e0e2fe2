#pragma once

#include "helpers/network/Routes.h"

/// A line of the IPv4 routing table.
struct TableLine
{
    Route route;
    std::string gateway;   ///< dotted; empty for a route without a gateway
    std::string interface; ///< its name
    unsigned link = 0;     ///< its number
    unsigned metric = 0;
};

/// The main table of the calling process' network, lowest metric first. Routes that reject packets are left out, and
/// a route over several uplinks shows the first. No name is resolved.
std::vector<TableLine> routingTable();
