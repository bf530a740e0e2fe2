#pragma once

#include <string>
#include <vector>

/// What came of a change to the default routes.
struct RouteOutcome
{
    bool done = false;
    std::vector<std::string> notes; ///< what could not be done, and why; a line each
};

/// Takes the machine's default routes away: the one through `gateway` (may be empty) and every other one that does
/// not lead into a tunnel, because a second uplink would carry what must stay in the tunnel. They are written to the
/// journal first; the tunnel's own packets keep a way out, and IPv6 is blocked. Called again, it completes what is
/// missing and takes away what has come since.
RouteOutcome deleteDefaultRoutes(const std::string &gateway);

/// While the default routes are away: takes away those that have come since. Nothing otherwise.
void keepDefaultRoutesAway();

/// Puts back exactly the routes of the journal and undoes everything else that deleteDefaultRoutes() did. Where that
/// leaves no default route, it adds one through `gateway`. Done when there is a default route in the end.
RouteOutcome restoreDefaultRoutes(const std::string &gateway);

/// Turns the default route with the lowest metric to another gateway.
RouteOutcome changeDefaultRoute(const std::string &gateway);
