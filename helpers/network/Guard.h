#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

/// A range of IPv4 addresses.
struct Subnet
{
    uint32_t address = 0; ///< in the machine's byte order
    unsigned length = 0;  ///< of the prefix, 0 to 32

    bool operator==(const Subnet &other) const { return address == other.address && length == other.length; }
};

/// Which packets may leave the machine, its own and those that it forwards. It says nothing of routes: whoever makes
/// those can not change it.
struct Policy
{
    /// False: all. True: only what goes to the loopback, into a tunnel, from OpenVPN itself, to the local network,
    /// or is DHCP or neighbour discovery.
    bool closed = false;
    bool keepsQueries = false;    ///< closed to name queries to the local network, too
    std::set<unsigned> tunnels;   ///< the tunnels' interfaces
    std::vector<Subnet> ordinary; ///< where the ordinary way is asked for
    std::set<unsigned> ports;     ///< OpenVPN's management ports, which nobody reaches but
    std::set<unsigned> managers;  ///< these users
};

/// Loads the policy in one transaction, in place of the one before. Returns the reason of a failure, or an empty
/// text; then the one before is still in force.
std::string loadGuard(const Policy &policy);

/// Removes the guard with all that belongs to it. Returns the reason of a failure, or an empty text.
std::string removeGuard();
