#pragma once

#include "helpers/network/Offer.h"
#include "helpers/network/State.h"

// What happens to the machine's network on Korvan's account. Each function does its work whole under the one lock,
// writes the journal before it changes anything, and may be repeated. docs/security.md tells which of them is called
// when.

/// What came of a change.
struct Outcome
{
    bool done = false;
    std::vector<std::string> notes; ///< what could not be done, and why; a line each
};

/// Done unless there is a reason why not, which joins the notes.
Outcome outcomeOf(const std::string &reason, std::vector<std::string> notes = {});

/// OpenVPN is about to become of this process: its packets get a way of their own, and its management port is shut to
/// everybody but `manager` and root. What a broken tunnel left standing is lifted unless the machine is locked.
/// Returns the reason of a failure, or an empty text, and whether the machine is locked.
std::string prepareTunnel(unsigned port, unsigned manager, bool &isLocked);

/// OpenVPN's tunnel is up: closes the machine to what would go past it and sets its name servers.
Outcome tunnelUp(const Offer &offer, const Process &openVpn);

/// OpenVPN has made its routes: a tunnel that does not take all traffic lets the rest go on.
Outcome tunnelRouted(const Offer &offer, const Process &openVpn);

/// The program has ended its tunnels, or begins anew: undoes what is left of those that are gone. Waits up to two
/// seconds for those that are about to end.
Outcome tunnelsEnded();

/// Ends all tunnels, by force where OpenVPN does not do as it is asked within ten seconds, and undoes what is left.
Outcome endTunnels();

/// Undoes what is left of tunnels that have ended, and keeps what is to stand as it was set, whoever changed it. The
/// guard of a tunnel that broke stands until `isDecided`, or somebody decides.
State keepNetwork(bool isDecided);

/// A system VPN service is about to be dialled at this host: what is a tunnel is told later by what was there before.
/// Without a host it has hung up.
void noteUplinks(const std::string &host);

/// Lock-down or the kill switch: nothing leaves but into a tunnel, and the default routes are taken away that do not
/// lead into one. `owner` is the program that wants it, number 0 for nobody.
Outcome lockNetwork(const Process &owner);

/// Puts the default routes back, as far as their networks are still there, and lifts the guard unless a tunnel is up.
/// Where there is no default route then, it adds one through `gateway`. Refused to others while the owner lives.
Outcome unlockNetwork(const std::string &gateway, const Process &caller);
