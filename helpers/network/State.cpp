#include "helpers/network/State.h"

#include "helpers/system/Journal.h"
#include "names/Names.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

namespace {

constexpr char kHexDigits[] = "0123456789abcdef";

std::string hex(const std::string &bytes)
{
    std::string text;
    for (const char c : bytes) {
        text += {kHexDigits[static_cast<unsigned char>(c) >> 4], kHexDigits[static_cast<unsigned char>(c) & 15]};
    }
    return text;
}

std::string bytesOf(const std::string &text)
{
    std::string bytes;
    for (size_t i = 0; i + 1 < text.size(); i += 2) {
        bytes += char(std::strtol(text.substr(i, 2).c_str(), nullptr, 16));
    }
    return bytes;
}

template <typename Value> Value read(std::istream &words)
{
    Value value{};
    words >> value;
    return value;
}

template <typename Value> std::vector<Value> readRest(std::istream &words)
{
    return {std::istream_iterator<Value>(words), {}};
}

Process readProcess(std::istream &words)
{
    Process process;
    words >> process.number >> process.start;
    return process;
}

std::vector<Subnet> readSubnets(std::istream &words)
{
    std::vector<Subnet> subnets;
    for (Subnet subnet; words >> subnet.address >> subnet.length;) {
        subnets.push_back(subnet);
    }
    return subnets;
}

/// A line about the tunnel that the last line "tunnel" began.
void readTunnelLine(Tunnel &tunnel, const std::string &key, std::istream &words)
{
    if (key == "device") {
        words >> tunnel.device >> tunnel.link;
    } else if (key == "takes-all") {
        tunnel.takesAll = true;
    } else if (key == "established") {
        tunnel.isEstablished = true;
    } else if (key == "resolver") {
        tunnel.resolver = Resolver(read<int>(words));
    } else if (key == "name-servers") {
        tunnel.servers.addresses = readRest<std::string>(words);
    } else if (key == "domains") {
        tunnel.servers.domains = readRest<std::string>(words);
    } else if (key == "host-route") {
        words >> tunnel.server >> tunnel.gateway;
    } else if (key == "ordinary") {
        tunnel.ordinary = readSubnets(words);
    }
}

void readLine(State &state, const std::string &key, std::istream &words)
{
    if (key == "locked") {
        state.isLocked = true;
    } else if (key == "undecided") {
        state.isUndecided = true;
    } else if (key == "owner") {
        state.owner = readProcess(words);
    } else if (key == "marks-checked") {
        state.marksChecked = true;
    } else if (key == "route") {
        if (const auto route = readRoute(bytesOf(read<std::string>(words)))) {
            state.routes.push_back(*route);
        }
    } else if (key == "uplinks") {
        state.uplinks = readRest<unsigned>(words);
    } else if (key == "services") {
        state.services = readSubnets(words);
    } else if (key == "service-links") {
        state.serviceLinks = readRest<unsigned>(words);
    } else if (key == "tunnel") {
        Tunnel tunnel;
        tunnel.process = readProcess(words);
        words >> tunnel.port >> tunnel.manager;
        state.tunnels.push_back(tunnel);
    } else if (!state.tunnels.empty()) {
        readTunnelLine(state.tunnels.back(), key, words);
    }
}

std::ostream &operator<<(std::ostream &text, const Subnet &subnet)
{
    return text << subnet.address << ' ' << subnet.length;
}

template <typename Values> void writeLine(std::ostream &text, const char *key, const Values &values)
{
    if (!values.empty()) {
        text << key;
        for (const auto &value : values) {
            text << ' ' << value;
        }
        text << '\n';
    }
}

void writeTunnel(std::ostream &text, const Tunnel &tunnel)
{
    text << "tunnel " << tunnel.process.number << ' ' << tunnel.process.start << ' ' << tunnel.port << ' '
         << tunnel.manager << '\n';
    text << (tunnel.device.empty() ? "" : "device " + tunnel.device + ' ' + std::to_string(tunnel.link) + '\n')
         << (tunnel.takesAll ? "takes-all\n" : "") << (tunnel.isEstablished ? "established\n" : "")
         << (tunnel.server.empty() ? "" : "host-route " + tunnel.server + ' ' + tunnel.gateway + '\n');
    text << "resolver " << int(tunnel.resolver) << '\n';
    writeLine(text, "name-servers", tunnel.servers.addresses);
    writeLine(text, "domains", tunnel.servers.domains);
    writeLine(text, "ordinary", tunnel.ordinary);
}

} // namespace

bool Process::lives() const
{
    return start != 0 && processOf(number).start == start;
}

Process processOf(int number)
{
    std::ifstream file("/proc/" + std::to_string(number) + "/stat");
    std::string text;
    std::getline(file, text);
    // The name before may hold blanks and brackets.
    std::istringstream fields(text.substr(std::min(text.size(), text.rfind(')') + 1)));
    const char state = read<char>(fields);
    std::string skipped;
    for (int field = 4; field < 22; ++field) {
        fields >> skipped;
    }
    const auto start = read<uint64_t>(fields);
    return {number, state == 'Z' || state == 'X' ? 0 : start};
}

bool State::isNothing() const
{
    return !isLocked && !isUndecided && routes.empty() && tunnels.empty() && uplinks.empty() && !marksChecked;
}

State readState(const std::string &journal)
{
    State state;
    state.stored = journal;
    std::istringstream lines(journal);
    std::string line;
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        const auto key = read<std::string>(words);
        readLine(state, key, words);
    }
    return state;
}

std::string journalOf(const State &state)
{
    std::ostringstream text;
    if (state.isNothing()) {
        return {};
    }
    text << (state.isLocked ? "locked\n" : "") << (state.isUndecided ? "undecided\n" : "")
         << (state.marksChecked ? "marks-checked\n" : "") << "owner " << state.owner.number << ' '
         << state.owner.start << '\n';
    for (const Route &route : state.routes) {
        text << "route " << hex(route.message) << '\n';
    }
    writeLine(text, "uplinks", state.uplinks);
    writeLine(text, "services", state.services);
    writeLine(text, "service-links", state.serviceLinks);
    for (const Tunnel &tunnel : state.tunnels) {
        writeTunnel(text, tunnel);
    }
    return text.str();
}

State loadState()
{
    const JournalText stored = readJournal(kNetworkJournal);
    State state = readState(stored.text);
    state.problem = stored.state == JournalText::State::Refused ? stored.reason : std::string();
    return state;
}

std::string storeState(State &state)
{
    const std::string text = journalOf(state);
    // Whoever watches the journal is woken by real changes only.
    if (text == state.stored && !text.empty()) {
        return {};
    }
    state.stored = text;
    return text.empty() ? removeJournal(kNetworkJournal) : writeJournal(kNetworkJournal, text);
}

Policy policyOf(const State &state)
{
    Policy policy;
    policy.closed = state.isLocked || state.isUndecided;
    const bool isHard = policy.closed;
    bool hasTunnel = false; // what a system VPN service brings is not known, so that queries are kept then
    bool bringsServers = false;
    policy.tunnels.insert(state.serviceLinks.begin(), state.serviceLinks.end());
    policy.ordinary = state.services;
    for (const Tunnel &tunnel : state.tunnels) {
        policy.closed = policy.closed || tunnel.takesAll;
        if (!tunnel.device.empty()) {
            hasTunnel = true;
            bringsServers = bringsServers || !tunnel.servers.addresses.empty();
            policy.tunnels.insert(tunnel.link);
        }
        if (!isHard) {
            policy.ordinary.insert(policy.ordinary.end(), tunnel.ordinary.begin(), tunnel.ordinary.end());
        }
        if (tunnel.port != 0) {
            policy.ports.insert(tunnel.port);
            policy.managers.insert({0, tunnel.manager});
        }
    }
    policy.keepsQueries = policy.closed && (bringsServers || !hasTunnel);
    return policy;
}
