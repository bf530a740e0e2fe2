#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// What a tunnel brings and asks for. All of it comes from the server and is let through only as what it claims to
/// be.
struct Offer
{
    std::string device;                   ///< the interface's name; empty when it is none
    int process = 0;                      ///< OpenVPN's own; of no process when it is not told
    std::string server;                   ///< the address that OpenVPN talks to
    std::set<std::string> names;          ///< names of the server; none where a proxy stands before it
    std::string netGateway;               ///< the gateway of the ordinary way
    std::vector<std::string> nameServers; ///< addresses
    std::vector<std::string> domains;
    std::set<std::string> ordinary;    ///< networks for which the ordinary way is asked for
    std::vector<std::string> taken;    ///< networks that the tunnel takes
    bool hasRoutes = false;            ///< OpenVPN will make routes
    bool takesAll = false;             ///< they will take all IPv4 traffic, as far as it can be known yet
    std::vector<std::string> problems; ///< what was left out, a line each
};

/// Reads OpenVPN's environment, which is this process'.
Offer readOffer();

/// What goes past the tunnel while the machine is not locked, by the routes that are made: see names/PastTunnel.h.
/// The local network always does.
std::string pastTunnel(const Offer &offer);

/// A range of IPv4 addresses.
struct Subnet
{
    std::string text; ///< "192.0.2.0/24"
    uint64_t first = 0;
    uint64_t end = 0; ///< the address behind the last
};

/// The range of a network's address and its dotted mask. No value when they are none.
std::optional<Subnet> subnetOf(const std::string &network, const std::string &mask);
