#include "helpers/network/Held.h"

#include "names/Names.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace {

constexpr char kCheckMarks[] = "/proc/sys/net/ipv4/conf/all/src_valid_mark";

std::string readSwitch(const std::filesystem::path &path)
{
    std::string value;
    std::ifstream(path) >> value;
    return value;
}

/// Whether packets are dropped that come from where no answer would go (rp_filter): back where they came from, or,
/// checked loosely, anywhere, as while locked.
bool checksSenders(bool isLocked)
{
    std::error_code failed;
    std::filesystem::directory_iterator link("/proc/sys/net/ipv4/conf", failed);
    for (; !failed && link != std::filesystem::directory_iterator(); link.increment(failed)) {
        const std::string check = readSwitch(link->path() / "rp_filter");
        if (check == "1" || (check == "2" && isLocked)) {
            return true;
        }
    }
    return false;
}

} // namespace

Held::Held() : m_stored(readJournal(kNetworkJournal).text)
{
    state = readState(m_stored);
    m_loaded = state.isGuarded() ? policyOf(state) : Policy();
}

void Held::removeEnded(Decision decision)
{
    std::vector<Tunnel> living;
    for (const Tunnel &tunnel : state.tunnels) {
        if (tunnel.process.lives()) {
            living.push_back(tunnel);
            continue;
        }
        if (tunnel.makesHostRoute) { // killed, OpenVPN leaves it
            changeRoute(RouteChange::Delete, routeTo(tunnel.offer.server, tunnel.offer.netGateway, RTPROT_UNSPEC));
        }
        setGroup(tunnel.link, 0); // an interface may outlive its tunnel
        dropNameServers(tunnel.resolver, tunnel.offer.device);
        state.isUndecided = state.isUndecided || (tunnel.takesAll && tunnel.isEstablished);
    }
    state.tunnels = living;
    state.isUndecided = state.isUndecided && decision == Decision::Open && !state.isLocked;
}

std::string Held::settle(Decision decision)
{
    removeEnded(decision);
    const bool guarded = state.isGuarded();
    // The kernel is to look at a packet's mark when it checks the sender, or it drops the answers to marked packets.
    std::string marks;
    if (!guarded) {
        marks.swap(state.marksBefore);
    } else if (state.marksBefore.empty() && checksSenders(state.isLocked)) {
        state.marksBefore = readSwitch(kCheckMarks);
        marks = "1";
    }
    std::string reason = guarded ? store() : std::string();
    if (guarded && reason.empty()) {
        reason = loadGuard(m_loaded, policyOf(state));
    } else if (!guarded && (decision == Decision::Taken || !m_loaded.empty())) { // whatever was left
        reason = removeGuard();
    }
    if (!marks.empty()) {
        std::ofstream(kCheckMarks) << marks << std::flush;
    }
    keepMarkedRoutes(AF_INET, guarded);
    keepMarkedRoutes(AF_INET6, guarded);
    keepNameServerFile();
    m_loaded = guarded ? policyOf(state) : Policy();
    const std::string failure = store();
    return reason.empty() ? failure : reason;
}

std::string Held::store()
{
    const std::string text = journalOf(state);
    // Whoever watches the journal is woken by real changes only.
    if (text == m_stored && !text.empty()) {
        return {};
    }
    m_stored = text;
    return text.empty() ? removeJournal(kNetworkJournal) : writeJournal(kNetworkJournal, text);
}

std::vector<Route> Held::uplinkRoutes(int family) const
{
    std::set<unsigned> tunnels = state.serviceLinks;
    for (const Tunnel &tunnel : state.tunnels) {
        tunnels.insert(tunnel.link);
    }
    std::vector<Route> uplinks;
    for (const Route &route : routesOf(family)) {
        const std::vector<unsigned> links = linksOf(route);
        const auto isUplink = [&tunnels](unsigned link) { return tunnels.count(link) == 0; };
        if (isDefault(route) && std::any_of(links.begin(), links.end(), isUplink)) {
            uplinks.push_back(route);
        }
    }
    return uplinks;
}

/// The ways out of the machine go to the table of OpenVPN's own packets, too.
void Held::keepMarkedRoutes(int family, bool wanted) const
{
    std::vector<Route> ways = wanted ? uplinkRoutes(family) : std::vector<Route>();
    for (const Bytes &taken : wanted &&family == AF_INET ? state.routes : std::vector<Bytes>()) {
        if (const Route route = readRoute(taken); route && !hasWay(ways, route)) {
            ways.push_back(route);
        }
    }
    if (family == AF_INET6 && ways.size() > 1) {
        ways.resize(1); // the kernel would make one route of them, which is neither
    }
    const std::vector<Route> present = routesOf(family, kTunnelTable);
    for (const Route &route : present) {
        if (!hasWay(ways, route)) {
            changeRoute(RouteChange::Delete, route, kTunnelTable);
        }
    }
    for (const Route &way : ways) {
        if (!hasWay(present, way)) {
            changeRoute(RouteChange::Append, way, kTunnelTable);
        }
    }
    changeMarkRules(family, wanted);
}

/// The file is the last tunnel's that brought name servers for it.
void Held::keepNameServerFile() const
{
    const auto last = std::find_if(state.tunnels.rbegin(), state.tunnels.rend(),
                                   [](const Tunnel &tunnel) { return tunnel.resolver == Resolver::File; });
    if (last == state.tunnels.rend()) {
        restoreNameServerFile();
    } else {
        setNameServerFile(last->offer);
    }
}
