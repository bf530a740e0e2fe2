#include "helpers/network/Network.h"
#include "helpers/network/Settle.h"
#include "helpers/system/Checks.h"
#include "helpers/system/Descriptor.h"
#include "names/Names.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstdlib>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netdb.h>
#include <poll.h>
#include <sstream>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr int kEndsWithinMs = 2000;
constexpr size_t kMostRemotes = 500;

Tunnel *tunnelOf(State &state, const Process &process)
{
    const auto found = std::find_if(state.tunnels.begin(), state.tunnels.end(), [&](const Tunnel &tunnel) {
        return tunnel.process.number == process.number && tunnel.process.start == process.start;
    });
    return found == state.tunnels.end() ? nullptr : &*found;
}

Outcome outcomeOf(const std::string &reason, std::vector<std::string> notes = {})
{
    if (!reason.empty()) {
        notes.push_back(reason);
    }
    return {reason.empty(), notes};
}

/// The addresses of a host; waits about a second for a name server that does not answer.
std::vector<std::string> addressesOf(const std::string &name)
{
    setenv("RES_OPTIONS", "timeout:1 attempts:1", 1);
    addrinfo hints = {};
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo *results = nullptr;
    std::vector<std::string> addresses;
    if (getaddrinfo(name.c_str(), nullptr, &hints, &results) != 0) {
        return addresses;
    }
    for (const addrinfo *each = results; each != nullptr; each = each->ai_next) {
        char text[NI_MAXHOST] = "";
        if (getnameinfo(each->ai_addr, each->ai_addrlen, text, sizeof text, nullptr, 0, NI_NUMERICHOST) == 0) {
            addresses.emplace_back(text);
        }
    }
    freeaddrinfo(results);
    return addresses;
}

bool hasAddress(const std::string &name, const std::string &address)
{
    const std::vector<std::string> addresses = addressesOf(name);
    return std::find(addresses.begin(), addresses.end(), address) != addresses.end();
}

/// While nobody may ask for names, compose falls back on the address that a name had here: lines "NAME ADDRESS". Of
/// several names, only those count that have this address.
void noteServer(const Offer &offer)
{
    for (const std::string &name : offer.server.empty() ? std::vector<std::string>() : offer.names) {
        if (offer.names.size() > 1 && !hasAddress(name, offer.server)) {
            continue;
        }
        std::string text = name + ' ' + offer.server + '\n';
        std::istringstream lines(readJournal(kLastRemote).text);
        std::string line;
        for (size_t count = 1; count < kMostRemotes && std::getline(lines, line); ++count) {
            text += line.rfind(name + ' ', 0) == 0 ? "" : line + '\n';
        }
        writeJournal(kLastRemote, text);
    }
}

/// Only a host route that OpenVPN is about to make itself is to be removed after it.
bool hasHostRoute(const std::string &server)
{
    const std::string address = routeTo(server, 32, {}, RTPROT_BOOT).destination;
    const std::vector<Route> routes = routesOf(AF_INET, RT_TABLE_MAIN);
    return std::any_of(routes.begin(), routes.end(),
                       [&](const Route &route) { return route.prefix == 32 && route.destination == address; });
}

void takeOffer(Tunnel &tunnel, const Offer &offer)
{
    tunnel.device = offer.device;
    tunnel.link = if_nametoindex(offer.device.c_str());
    tunnel.takesAll = tunnel.takesAll || offer.hasRoutes; // until its routes tell
    tunnel.ordinary = offer.ordinary;
    tunnel.servers = {offer.nameServers, offer.domains};
    const bool makesHostRoute = isIpv4(offer.server) && !offer.netGateway.empty() && !hasHostRoute(offer.server);
    tunnel.server = makesHostRoute ? offer.server : std::string();
    tunnel.gateway = makesHostRoute ? offer.netGateway : std::string();
}

void waitForEnds(const State &state)
{
    for (const Tunnel &tunnel : state.tunnels) {
        const Descriptor process(int(syscall(SYS_pidfd_open, tunnel.process.number, 0)));
        pollfd end = {process, POLLIN, 0};
        if (process >= 0 && tunnel.process.lives()) {
            poll(&end, 1, kEndsWithinMs);
        }
    }
}

} // namespace

std::string prepareTunnel(unsigned port, unsigned manager, bool &isLocked)
{
    Held held;
    Tunnel tunnel;
    tunnel.process = processOf(getpid());
    tunnel.port = port;
    tunnel.manager = manager;
    held.state.tunnels.push_back(tunnel);
    held.state.uplinks.clear();
    isLocked = held.state.isLocked;
    return settle(held.state, Decision::Taken);
}

Outcome tunnelUp(const Offer &offer, const Process &openVpn)
{
    noteServer(offer);
    Held held;
    State &state = held.state;
    if (offer.device.empty() || !openVpn.lives()) {
        return outcomeOf(openVpn.lives() ? "it has no interface" : "OpenVPN has ended", offer.problems);
    }
    removeEnded(state, Decision::Taken);
    if (tunnelOf(state, openVpn) == nullptr) {
        state.tunnels.push_back({});
        state.tunnels.back().process = openVpn;
    }
    takeOffer(*tunnelOf(state, openVpn), offer);
    const std::string reason = settle(state, Decision::Taken);
    Tunnel &tunnel = *tunnelOf(state, openVpn);
    if (!reason.empty() && (tunnel.takesAll || state.isLocked)) {
        return outcomeOf(reason, offer.problems);
    }
    joinTunnelGroup(tunnel.link);
    std::vector<std::string> notes = offer.problems;
    if (!tunnel.servers.addresses.empty()) {
        tunnel.resolver = setNameServers(tunnel.device, tunnel.servers);
        if (tunnel.resolver == Resolver::None) {
            notes.emplace_back("can not set the name servers");
        }
        storeState(state);
    }
    return outcomeOf({}, notes);
}

Outcome tunnelRouted(const Offer &offer, const Process &openVpn)
{
    Held held;
    if (Tunnel *tunnel = tunnelOf(held.state, openVpn)) {
        tunnel->isEstablished = true;
        tunnel->takesAll = offer.takesAll;
    }
    return outcomeOf(settle(held.state, Decision::Open));
}

Outcome tunnelDown(const Process &openVpn)
{
    Held held;
    if (Tunnel *tunnel = tunnelOf(held.state, openVpn)) {
        dropNameServers(tunnel->resolver, tunnel->device);
        tunnel->resolver = Resolver::None;
        tunnel->servers = {};
        tunnel->device.clear();
        tunnel->link = 0;
    }
    return outcomeOf(settle(held.state, Decision::Open));
}

Outcome tunnelsEnded(bool wait)
{
    if (wait) {
        waitForEnds(loadState());
    }
    Held held;
    return outcomeOf(settle(held.state, Decision::Taken));
}

State keepNetwork(bool isDecided)
{
    Held held;
    settle(held.state, isDecided ? Decision::Taken : Decision::Open);
    return held.state;
}

void noteUplinks(const std::string &host)
{
    std::vector<Subnet> services;
    for (const std::string &address : addressesOf(host)) {
        if (const auto service = subnetOf(address, "255.255.255.255")) {
            services.push_back(*service);
        }
    }
    Held held;
    held.state.uplinks = allLinks();
    held.state.services = services;
    storeState(held.state);
}

void forgetUplinks()
{
    Held held;
    held.state.uplinks.clear();
    held.state.services.clear();
    storeState(held.state);
}
