#pragma once

#include "helpers/network/Guard.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

/// The environment in which OpenVPN runs its scripts.
using Environment = std::map<std::string, std::string>;

/// What a tunnel brings and asks for. All of it comes from the server and is let through only as what it claims to
/// be.
struct Offer
{
    std::string device;                   ///< the interface's name; empty when it is none
    int process = 0;                      ///< OpenVPN's own; 0 when it is not told
    std::string server;                   ///< the address that OpenVPN talks to
    std::vector<std::string> names;       ///< names of the server; none where a proxy stands before it
    std::string netGateway;               ///< the gateway of the ordinary way
    std::vector<std::string> nameServers; ///< addresses
    std::vector<std::string> domains;
    std::vector<Subnet> ordinary;      ///< where the ordinary way is asked for
    std::vector<std::string> taken;    ///< what the tunnel takes, with the lengths of the prefixes
    bool hasRoutes = false;            ///< OpenVPN will make routes
    bool takesAll = false;             ///< they will take all IPv4 traffic, as far as it can be known yet
    std::vector<std::string> problems; ///< what was left out, a line each
};

/// Reads OpenVPN's environment.
Offer readOffer(const Environment &environment);

/// What goes past the tunnel while the machine is not locked, by the routes that are made: see names/PastTunnel.h.
/// The local network always does.
std::string pastTunnel(const Offer &offer);

/// The range of a network's address and its dotted mask. No value when they are none.
std::optional<Subnet> subnetOf(const std::string &network, const std::string &mask);
