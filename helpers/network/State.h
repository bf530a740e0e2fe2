#pragma once

#include "helpers/network/Guard.h"
#include "helpers/network/NameServers.h"
#include "helpers/network/Netlink.h"

#include <cstdint>
#include <string>
#include <vector>

/// A process, told apart from a later one with the same number.
struct Process
{
    int number = 0;
    uint64_t start = 0; ///< in the kernel's ticks since the machine's start

    bool lives() const;
};

/// The process of this number; `start` is 0 when there is none.
Process processOf(int number);

/// A tunnel of OpenVPN, from before it is asked for until what it left is undone.
struct Tunnel
{
    Process process; ///< OpenVPN, or compose, which becomes it
    unsigned port = 0;
    unsigned manager = 0; ///< the user who may use the management port

    std::string device; ///< empty while there is none
    unsigned link = 0;
    bool takesAll = false;      ///< all traffic is to go through it, as far as it is known
    bool isEstablished = false; ///< its routes are made
    Resolver resolver = Resolver::None;
    NameServers servers;
    std::string server; ///< with `gateway`: the host route that OpenVPN makes itself
    std::string gateway;
    std::vector<Subnet> ordinary;
};

/// What Korvan has changed in the machine's network or is to keep changed: the journal.
struct State
{
    bool isLocked = false;     ///< lock-down, or the kill switch
    bool isUndecided = false;  ///< a tunnel has broken, and the program has not said yet what is to come
    Process owner;             ///< the program that locked; number 0: nobody's
    bool marksChecked = false; ///< the kernel was told to look at marks when it checks senders
    std::vector<Route> routes; ///< the default routes that were taken away, in the order in which they come back
    std::vector<Tunnel> tunnels;
    std::vector<unsigned> uplinks;      ///< the interfaces that were there before a system VPN service was dialled
    std::vector<unsigned> serviceLinks; ///< those that had come with it when lock-down began
    std::vector<Subnet> services;       ///< that service's addresses
    std::string problem;                ///< set when there is a journal that can not be believed
    std::string stored;                 ///< the journal's text as it is in the file

    bool isNothing() const;
};

/// The journal's text, empty when there is nothing to keep, and what it says.
std::string journalOf(const State &state);
State readState(const std::string &journal);

State loadState();

/// Writes the journal where it has changed, or removes it when there is nothing to keep. Returns the reason of a
/// failure, or an empty text.
std::string storeState(State &state);

/// Which packets may leave in this state.
Policy policyOf(const State &state);
