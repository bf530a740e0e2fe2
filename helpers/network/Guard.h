#pragma once

#include <map>
#include <set>
#include <string>

/// Which packets may leave the machine, its own and those that it forwards: what the sets of the guard's rules hold,
/// as nft writes it. It says nothing of routes: whoever makes those can not change it.
///   closed    "ipv4", "ipv6": nothing leaves but into an interface of kTunnelGroup, from OpenVPN itself, to the
///             local network, over the loopback, for DHCP or neighbour discovery
///   asked     ports for name queries at which the local network may be asked while closed
///   ordinary  IPv4 networks for which the ordinary way is asked for
///   ports     OpenVPN's management ports, which nobody reaches but
///   managers  these users
///   senders   "ipv4" where the kernel checks whether a packet's sender can be reached
using Policy = std::map<std::string, std::set<std::string>>;

/// Turns the policy `before`, empty where there is no guard, into another one, in one transaction. Returns the reason
/// of a failure, or an empty text; then the one before is still in force.
std::string loadGuard(const Policy &before, const Policy &policy);

/// Removes the guard with all that belongs to it. Returns the reason of a failure, or an empty text.
std::string removeGuard();
