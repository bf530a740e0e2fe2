#include "helpers/network/State.h"

#include <fcntl.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>
#include <sys/syscall.h>
#include <unistd.h>

// The journal's text is made of these members.
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Process, number, start)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Offer, device, server, netGateway, nameServers, domains, ordinary)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Tunnel, process, port, manager, offer, link, takesAll, isEstablished,
                                   makesHostRoute, resolver)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(State, isLocked, isUndecided, owner, marksBefore, routes, tunnels, uplinks,
                                   serviceLinks, services)

bool Process::lives() const
{
    return start != 0 && processOf(number).start == start;
}

Descriptor Process::open() const
{
    return Descriptor(int(syscall(SYS_pidfd_open, number, 0)));
}

Process processOf(int number)
{
    const std::string path = "/proc/" + std::to_string(number) + "/stat";
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::string text;
    if (file < 0 || !readAll(file, text)) { // it may end in between
        return {number, 0};
    }
    // The name in brackets may hold blanks and brackets.
    std::istringstream fields(text.erase(0, text.rfind(')') + 1));
    const std::vector<std::string> words(std::istream_iterator<std::string>(fields), {});
    constexpr size_t kStart = 19; // counted from the state
    if (words.size() <= kStart || words[0] == "Z" || words[0] == "X") {
        return {number, 0};
    }
    return {number, std::strtoull(words[kStart].c_str(), nullptr, 10)};
}

State readState(const std::string &journal)
{
    try {
        return journal.empty() ? State() : nlohmann::json::parse(journal).get<State>();
    } catch (const nlohmann::json::exception &) {
        return {};
    }
}

std::string journalOf(const State &state)
{
    const nlohmann::json journal = state;
    return journal == nlohmann::json(State()) ? std::string() : journal.dump(1) + '\n';
}

Policy policyOf(const State &state)
{
    Policy policy;
    const bool isHard = state.isLocked || state.isUndecided;
    bool isClosed = isHard;
    bool hasTunnel = false; // what a system VPN service brings is not known, so that queries are kept then
    bool bringsServers = false;
    policy["ordinary"] = state.services;
    for (const Tunnel &tunnel : state.tunnels) {
        isClosed = isClosed || tunnel.takesAll;
        if (!tunnel.offer.device.empty()) {
            hasTunnel = true;
            bringsServers = bringsServers || !tunnel.offer.nameServers.empty();
        }
        if (!isHard) {
            policy["ordinary"].insert(tunnel.offer.ordinary.begin(), tunnel.offer.ordinary.end());
        }
        if (tunnel.port != 0) {
            policy["ports"].insert(std::to_string(tunnel.port));
            policy["managers"].insert({"0", std::to_string(tunnel.manager)});
        }
    }
    if (!state.marksBefore.empty()) {
        policy["senders"] = {"ipv4"};
    }
    if (isClosed) {
        policy["closed"] = {"ipv4", "ipv6"};
    }
    if (isClosed && hasTunnel && !bringsServers) {
        policy["asked"] = {"53", "853"};
    }
    return policy;
}
