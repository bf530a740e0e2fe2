#include "helpers/network/Network.h"

#include "helpers/network/Held.h"
#include "helpers/system/Checks.h"
#include "names/Names.h"

#include <algorithm>
#include <csignal>
#include <iterator>
#include <net/if.h>
#include <netdb.h>
#include <poll.h>
#include <sstream>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr int kEndsWithinMs = 2000;
constexpr int kAskedEndsWithinMs = 10000;
constexpr size_t kMostRemotes = 500;

Tunnel *tunnelOf(State &state, const Process &process)
{
    const auto found = std::find_if(state.tunnels.begin(), state.tunnels.end(), [&](const Tunnel &tunnel) {
        return tunnel.process.number == process.number && tunnel.process.start == process.start;
    });
    return found == state.tunnels.end() ? nullptr : &*found;
}

/// Waits for the end of the tunnel's OpenVPN, which gets the signal before; 0 is none.
void awaitEnd(const Tunnel &tunnel, int signal, int limitMs)
{
    const Descriptor process = tunnel.process.open();
    pollfd end = {process, POLLIN, 0};
    if (tunnel.process.lives()) { // and so it is the one that was opened
        syscall(SYS_pidfd_send_signal, int(process), signal, nullptr, 0);
        poll(&end, 1, limitMs);
    }
}

/// The addresses of a host; waits about a second for a name server that does not answer.
std::set<std::string> addressesOf(const std::string &name)
{
    setenv("RES_OPTIONS", "timeout:1 attempts:1", 1);
    addrinfo *results = nullptr;
    std::set<std::string> addresses;
    if (getaddrinfo(name.c_str(), nullptr, nullptr, &results) != 0) {
        return addresses;
    }
    for (const addrinfo *each = results; each != nullptr; each = each->ai_next) {
        char text[NI_MAXHOST] = "";
        getnameinfo(each->ai_addr, each->ai_addrlen, text, sizeof text, nullptr, 0, NI_NUMERICHOST);
        addresses.insert(text);
    }
    freeaddrinfo(results);
    return addresses;
}

/// While nobody may ask for names, compose falls back on the address that a name had here: lines "NAME ADDRESS". Of
/// several names, only those count that have this address.
void noteServer(const Offer &offer)
{
    for (const std::string &name : offer.names) {
        if (offer.server.empty() || (offer.names.size() > 1 && addressesOf(name).count(offer.server) == 0)) {
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
bool makesHostRoute(const Offer &offer)
{
    const Route own = routeTo(offer.server, offer.netGateway, RTPROT_UNSPEC);
    const std::vector<Route> routes = routesOf(AF_INET);
    return isIpv4(offer.server) && !offer.netGateway.empty() &&
           std::none_of(routes.begin(), routes.end(),
                        [&own](const Route &route) { return hasSameDestination(route, own); });
}

std::set<unsigned> allLinks()
{
    std::set<unsigned> links;
    struct if_nameindex *const all = if_nameindex();
    for (const auto *each = all; each != nullptr && each->if_index != 0; ++each) {
        links.insert(each->if_index);
    }
    if_freenameindex(all);
    return links;
}

/// The reason why the machine is locked for somebody else, or an empty text.
std::string othersLock(const State &state, const Process &caller)
{
    const bool isOthers = state.owner.number != 0 && state.owner.number != caller.number && state.owner.lives();
    return isOthers ? "another Korvan, process " + std::to_string(state.owner.number) + ", has locked it" : "";
}

} // namespace

Outcome outcomeOf(const std::string &reason, std::vector<std::string> notes)
{
    if (!reason.empty()) {
        notes.push_back(reason);
    }
    return {reason.empty(), notes};
}

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
    return held.settle(Decision::Taken);
}

Outcome tunnelUp(const Offer &offer, const Process &openVpn)
{
    noteServer(offer);
    Held held;
    if (offer.device.empty() || !openVpn.lives()) {
        return outcomeOf(openVpn.lives() ? "it has no interface" : "OpenVPN has ended", offer.problems);
    }
    held.removeEnded(Decision::Taken);
    if (tunnelOf(held.state, openVpn) == nullptr) {
        held.state.tunnels.emplace_back().process = openVpn;
    }
    Tunnel &changed = *tunnelOf(held.state, openVpn);
    if (offer.nameServers.empty()) { // an OpenVPN that started its tunnel anew may have brought some before
        dropNameServers(changed.resolver, changed.offer.device);
        changed.resolver = Resolver::None;
    }
    changed.offer = offer;
    changed.link = if_nametoindex(offer.device.c_str());
    setGroup(changed.link, kTunnelGroup);
    changed.takesAll = changed.takesAll || offer.hasRoutes; // until its routes tell
    changed.makesHostRoute = makesHostRoute(offer);
    const std::string reason = held.settle(Decision::Taken);
    Tunnel *const tunnel = tunnelOf(held.state, openVpn);
    if (tunnel == nullptr || (!reason.empty() && (tunnel->takesAll || held.state.isLocked))) {
        return outcomeOf(tunnel == nullptr ? "OpenVPN has ended" : reason, offer.problems);
    }
    Outcome outcome{true, offer.problems};
    if (!offer.nameServers.empty()) {
        tunnel->resolver = setNameServers(offer);
        if (tunnel->resolver == Resolver::None) {
            outcome.notes.emplace_back("can not set the name servers");
        }
        held.store();
    }
    return outcome;
}

Outcome tunnelRouted(const Offer &offer, const Process &openVpn)
{
    Held held;
    if (Tunnel *tunnel = tunnelOf(held.state, openVpn)) {
        tunnel->isEstablished = true;
        tunnel->takesAll = offer.takesAll;
    }
    return outcomeOf(held.settle(Decision::Open));
}

Outcome tunnelsEnded()
{
    const std::vector<Tunnel> tunnels = Held().state.tunnels;
    for (const Tunnel &tunnel : tunnels) {
        awaitEnd(tunnel, 0, kEndsWithinMs);
    }
    return outcomeOf(Held().settle(Decision::Taken));
}

Outcome endTunnels()
{
    const std::vector<Tunnel> tunnels = Held().state.tunnels;
    for (const int signal : {SIGTERM, SIGKILL}) {
        for (const Tunnel &tunnel : tunnels) {
            awaitEnd(tunnel, signal, kAskedEndsWithinMs);
        }
    }
    return tunnelsEnded();
}

State keepNetwork(bool isDecided)
{
    Held held;
    held.settle(isDecided ? Decision::Taken : Decision::Open);
    return held.state;
}

void noteUplinks(const std::string &host)
{
    const std::set<std::string> services = addressesOf(host);
    Held held;
    held.state.uplinks = host.empty() ? std::set<unsigned>() : allLinks();
    held.state.services.clear();
    for (const std::string &address : services) {
        if (isIpv4(address)) {
            held.state.services.insert(address);
        }
    }
    held.store();
}

Outcome lockNetwork(const Process &owner)
{
    Held held;
    State &state = held.state;
    const std::string refused = othersLock(state, owner);
    if (!refused.empty()) {
        return outcomeOf(refused);
    }
    // What has come with a system VPN service is a tunnel; what was there before it is none.
    const std::set<unsigned> links = state.uplinks.empty() ? state.uplinks : allLinks();
    std::set_difference(links.begin(), links.end(), state.uplinks.begin(), state.uplinks.end(),
                        std::inserter(state.serviceLinks, state.serviceLinks.end()));
    state.uplinks.clear();
    for (const unsigned link : state.serviceLinks) {
        setGroup(link, kTunnelGroup);
    }
    state.isLocked = true;
    state.owner = owner;
    const std::vector<Route> routes = held.uplinkRoutes(AF_INET);
    // New routes go in front: where an interface got another one since, it is to win.
    std::vector<Bytes> noted;
    std::transform(routes.begin(), routes.end(), std::back_inserter(noted), bytesOf);
    std::copy_if(state.routes.begin(), state.routes.end(), std::back_inserter(noted),
                 [&noted](const Bytes &old) { return std::find(noted.begin(), noted.end(), old) == noted.end(); });
    state.routes = noted;
    const std::string unwritten = held.store();
    if (!unwritten.empty()) { // then nobody would put them back
        return outcomeOf(unwritten);
    }
    const std::string reason = held.settle(Decision::Taken);
    for (const Route &route : routes) { // what stays does no harm: the guard does not ask for routes
        changeRoute(RouteChange::Delete, route);
    }
    return outcomeOf(reason);
}

Outcome unlockNetwork(const std::string &gateway, const Process &caller)
{
    Held held;
    State &state = held.state;
    const std::string refused = othersLock(state, caller);
    if (!refused.empty()) {
        return outcomeOf(refused);
    }
    // What can not come back belongs to a network that is gone.
    const std::vector<Route> present = held.uplinkRoutes(AF_INET);
    for (const Bytes &bytes : state.routes) {
        const Route route = readRoute(bytes);
        if (route && !hasWay(present, route)) {
            changeRoute(RouteChange::Append, route);
        }
    }
    std::string missing;
    if (held.uplinkRoutes(AF_INET).empty()) {
        missing = isIpv4(gateway) ? changeRoute(RouteChange::Add, routeTo({}, gateway, RTPROT_BOOT))
                                  : "no deleted route to restore, and \"" + gateway + "\" is no gateway address";
    }
    const bool done = state.isLocked || missing.empty();
    for (const unsigned link : state.serviceLinks) {
        setGroup(link, 0);
    }
    State open;
    open.tunnels = state.tunnels;
    open.marksBefore = state.marksBefore;
    state = open;
    const std::string reason = held.settle(Decision::Taken);
    return done ? Outcome{true, outcomeOf(reason).notes} : outcomeOf(missing);
}
