#pragma once

#include "helpers/network/Guard.h"
#include "helpers/network/NameServers.h"
#include "helpers/network/Routes.h"
#include "helpers/system/Descriptor.h"

/// A process, told apart from a later one with the same number.
struct Process
{
    int number = 0;
    uint64_t start = 0; ///< in the kernel's ticks since the machine's start

    bool lives() const;

    /// A descriptor that can be read when the process has ended; none when there is no such process.
    Descriptor open() const;
};

/// The process of this number; `start` is 0 when there is none.
Process processOf(int number);

/// A tunnel of OpenVPN, from before it is asked for until what it left is undone.
struct Tunnel
{
    Process process; ///< OpenVPN, or compose, which becomes it
    unsigned port = 0;
    unsigned manager = 0; ///< the user who may use the management port

    Offer offer; ///< without an interface until it is up
    unsigned link = 0;
    bool takesAll = false;       ///< all traffic is to go through it, as far as it is known
    bool isEstablished = false;  ///< its routes are made
    bool makesHostRoute = false; ///< OpenVPN makes one to the server
    Resolver resolver = Resolver::None;
};

/// What Korvan has changed in the machine's network or is to keep changed: the journal.
struct State
{
    bool isLocked = false;     ///< lock-down, or the kill switch
    bool isUndecided = false;  ///< a tunnel has broken, and the program has not said yet what is to come
    Process owner;             ///< the program that locked; number 0: nobody's
    std::string marksBefore;   ///< set while the kernel is told to look at marks when it checks senders: as it was
    std::vector<Bytes> routes; ///< the default routes that were taken away, in the order in which they come back
    std::vector<Tunnel> tunnels;
    std::set<unsigned> uplinks;      ///< the interfaces that were there before a system VPN service was dialled
    std::set<unsigned> serviceLinks; ///< those that had come with it when lock-down began
    std::set<std::string> services;  ///< that service's addresses

    bool isGuarded() const { return isLocked || isUndecided || !tunnels.empty(); }
};

/// The journal's text, empty when there is nothing to keep, and what it says: nothing when it is none.
std::string journalOf(const State &state);
State readState(const std::string &journal);

/// Which packets may leave in this state.
Policy policyOf(const State &state);
