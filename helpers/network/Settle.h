#pragma once

#include "helpers/network/State.h"
#include "helpers/system/Journal.h"

/// The state of the machine's network while nobody else changes it.
struct Held
{
    JournalLock lock{"network-lock"};
    State state = loadState();
};

/// What a broken tunnel leaves to be decided.
enum class Decision { Open, Taken };

/// Undoes what is left of tunnels that have ended and takes them out of the state.
void removeEnded(State &state, Decision decision);

/// Writes the journal and makes the machine's network what the state says: removes what has ended, loads or lifts the
/// guard, keeps OpenVPN's own way and the name servers. Returns the reason why the guard can not be loaded, or an
/// empty text.
std::string settle(State &state, Decision decision);

/// True when the route's interfaces all belong to tunnels.
bool leadsIntoTunnel(const State &state, const Route &route);

/// The default routes of the main table that lead out of the machine and into no tunnel.
std::vector<Route> uplinkRoutes(const State &state, uint8_t family);
