#include "helpers/network/Offer.h"

#include "helpers/system/Checks.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cctype>
#include <cstdlib>
#include <iterator>
#include <net/if.h>
#include <sstream>

namespace {

/// More of one kind is no server's wish.
constexpr int kMost = 1000;

/// As many destinations as somebody reads.
constexpr size_t kMostTold = 8;

class Reader
{
public:
    explicit Reader(const Environment &environment) : m_environment(environment) {}

    std::string value(const std::string &name) const
    {
        const auto found = m_environment.find(name);
        return found == m_environment.end() ? std::string() : found->second;
    }
    std::string value(const char *name, int number) const { return value(name + ('_' + std::to_string(number))); }

    std::string address(const std::string &name) const
    {
        const std::string text = value(name);
        return isIpv4(text) || isIpv6(text) ? text : std::string();
    }

private:
    const Environment &m_environment;
};

/// A text of the server's as it may stand in a log.
std::string shown(const std::string &text)
{
    std::string clean = text.substr(0, 100);
    std::replace_if(clean.begin(), clean.end(), isControl, '?');
    return '"' + clean + '"';
}

/// True for labels of letters, digits, "-" and "_" between single dots.
bool isDomain(const std::string &text)
{
    char before = '.';
    for (const char c : text) {
        const bool isWord = std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
        if (!isWord && (before == '.' || (c != '-' && c != '.'))) {
            return false;
        }
        before = c;
    }
    return !text.empty() && text.size() <= 253 && before != '-';
}

void readPushedNames(const Reader &reader, Offer &offer)
{
    for (int n = 1; n < kMost; ++n) {
        std::istringstream words(reader.value("foreign_option", n));
        std::string option;
        std::string kind;
        if (!(words >> option)) {
            break;
        }
        words >> kind;
        words >> std::ws;
        const std::string what(std::istreambuf_iterator<char>(words), {}); // line ends too, which no value has
        if (option != "dhcp-option") {
            continue;
        }
        if (kind == "DNS" || kind == "DNS6") {
            const bool good = isIpv4(what) || isIpv6(what);
            (good ? offer.nameServers : offer.problems).push_back(good ? what : "no address: " + shown(what));
        } else if (kind == "DOMAIN" || kind == "DOMAIN-SEARCH") {
            const bool good = isDomain(what);
            (good ? offer.domains : offer.problems).push_back(good ? what : "no domain: " + shown(what));
        }
    }
}

/// Through a proxy the address is the proxy's.
void readRemotes(const Reader &reader, Offer &offer)
{
    for (int n = 1; n < kMost && !reader.value("remote", n).empty(); ++n) {
        const std::string name = reader.value("remote", n);
        if (name == offer.server ||
            !(reader.value("http_proxy_server", n) + reader.value("socks_proxy_server", n)).empty()) {
            offer.names.clear();
            return;
        }
        if (isDomain(name) && !isIpv4(name) &&
            std::find(offer.names.begin(), offer.names.end(), name) == offer.names.end()) {
            offer.names.push_back(name);
        }
    }
}

bool coverAll(std::vector<Subnet> subnets)
{
    std::sort(subnets.begin(), subnets.end(), [](const Subnet &a, const Subnet &b) { return a.address < b.address; });
    uint64_t covered = 0;
    for (const Subnet &subnet : subnets) {
        if (subnet.address <= covered) {
            covered = std::max(covered, subnet.address + (uint64_t(1) << (32 - subnet.length)));
        }
    }
    return covered > UINT32_MAX;
}

std::string textOf(const Subnet &subnet)
{
    const in_addr address = {htonl(subnet.address)};
    char text[INET_ADDRSTRLEN] = "";
    inet_ntop(AF_INET, &address, text, sizeof text);
    return text + ('/' + std::to_string(subnet.length));
}

/// Adds "ADDRESS/LENGTH" of what is for IPv6.
void readIpv6Routes(const Reader &reader, Offer &offer)
{
    for (int n = 1; n < kMost && !reader.value("route_ipv6_network", n).empty(); ++n) {
        const std::string text = reader.value("route_ipv6_network", n);
        const size_t slash = text.find('/');
        if (slash != std::string::npos && isIpv6(text.substr(0, slash)) && isNumber(text.substr(slash + 1))) {
            offer.taken.push_back(text);
        }
    }
}

std::string listOf(const std::vector<std::string> &destinations)
{
    std::string list;
    for (size_t i = 0; i < std::min(destinations.size(), kMostTold); ++i) {
        list += (i > 0 ? ", " : "") + destinations[i];
    }
    return list + (destinations.size() > kMostTold ? ", ..." : "");
}

void readRoutes(const Reader &reader, Offer &offer)
{
    std::vector<Subnet> taken;
    for (int n = 1; n < kMost && !reader.value("route_network", n).empty(); ++n) {
        const auto subnet = subnetOf(reader.value("route_network", n), reader.value("route_netmask", n));
        if (!subnet) {
            offer.problems.push_back("no destination: " + shown(reader.value("route_network", n)));
        } else if (!offer.netGateway.empty() && reader.value("route_gateway", n) == offer.netGateway) {
            offer.ordinary.push_back(*subnet);
        } else {
            taken.push_back(*subnet);
            offer.taken.push_back(textOf(*subnet));
        }
    }
    readIpv6Routes(reader, offer);
    offer.takesAll = reader.value("redirect_gateway") == "1" || coverAll(taken);
    offer.hasRoutes =
        offer.takesAll || !reader.value("route_vpn_gateway").empty() || !reader.value("route_ipv6_network_1").empty();
}

} // namespace

std::string pastTunnel(const Offer &offer)
{
    std::vector<std::string> ordinary;
    std::transform(offer.ordinary.begin(), offer.ordinary.end(), std::back_inserter(ordinary), textOf);
    if (offer.takesAll) {
        return ordinary.empty() ? "nothing" : listOf(ordinary);
    }
    return offer.taken.empty() ? "all"
                               : "all but " + listOf(offer.taken) + (ordinary.empty() ? "" : "; " + listOf(ordinary));
}

std::optional<Subnet> subnetOf(const std::string &network, const std::string &mask)
{
    in_addr address = {};
    const std::optional<int> length = prefixLength(mask);
    if (inet_pton(AF_INET, network.c_str(), &address) != 1 || !length) {
        return {};
    }
    const uint64_t size = uint64_t(1) << (32 - *length);
    return Subnet{ntohl(address.s_addr) & ~uint32_t(size - 1), unsigned(*length)};
}

Offer readOffer(const Environment &environment)
{
    const Reader reader(environment);
    Offer offer;
    const std::string device = reader.value("dev");
    const bool isName = !device.empty() && device.size() < IFNAMSIZ && device.find('/') == std::string::npos &&
                        std::all_of(device.begin(), device.end(), [](char c) { return c > ' ' && c <= '~'; });
    if (isName && device != "." && device != "..") {
        offer.device = device;
    } else {
        offer.problems.push_back("no interface name: " + shown(device));
    }
    const std::string process = reader.value("daemon_pid");
    if (isNumber(process) && process.size() < 10) {
        offer.process = int(std::strtol(process.c_str(), nullptr, 10));
    }
    const std::string server = reader.address("trusted_ip");
    offer.server = server.empty() ? reader.address("trusted_ip6") : server;
    offer.netGateway = isIpv4(reader.value("route_net_gateway")) ? reader.value("route_net_gateway") : std::string();
    readPushedNames(reader, offer);
    readRemotes(reader, offer);
    readRoutes(reader, offer);
    return offer;
}
