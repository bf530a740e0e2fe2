#pragma once

#include "helpers/network/State.h"
#include "helpers/system/Journal.h"

/// What a broken tunnel leaves to be decided.
enum class Decision { Open, Taken };

/// The state of the machine's network while nobody else changes it.
class Held
{
public:
    Held();

    State state;

    /// Undoes what is left of tunnels that have ended and takes them out of the state.
    void removeEnded(Decision decision);

    /// Writes the journal and makes the machine's network what the state says: removes what has ended, loads or lifts
    /// the guard, keeps OpenVPN's own way and the name servers. Returns the reason why the guard can not be loaded,
    /// or an empty text.
    std::string settle(Decision decision);

    /// Writes the journal where it has changed, or removes it when there is nothing to keep. Returns the reason of a
    /// failure, or an empty text.
    std::string store();

    /// The default routes of the main table that lead out of the machine and into no tunnel.
    std::vector<Route> uplinkRoutes(int family) const;

private:
    void keepMarkedRoutes(int family, bool wanted) const;
    void keepNameServerFile() const;

    JournalLock m_lock{"network-lock"};
    std::string m_stored;
    Policy m_loaded;
};
