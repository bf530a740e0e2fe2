#include "helpers/network/Offer.h"

#include "helpers/system/Checks.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstdlib>
#include <map>
#include <net/if.h>
#include <regex>
#include <sstream>

namespace {

/// As many destinations as somebody reads.
constexpr size_t kMostTold = 8;

std::string value(const std::string &name)
{
    const char *text = std::getenv(name.c_str());
    return text != nullptr ? text : "";
}

std::string address(const std::string &name)
{
    const std::string text = value(name);
    return isIpv4(text) || isIpv6(text) ? text : std::string();
}

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
    static const std::regex labels("[A-Za-z0-9_][A-Za-z0-9_-]*(\\.[A-Za-z0-9_][A-Za-z0-9_-]*)*\\.?");
    return text.size() <= 253 && std::regex_match(text, labels) && text.back() != '-';
}

void readPushedNames(Offer &offer)
{
    std::string text;
    for (int n = 1; !(text = value("foreign_option_" + std::to_string(n))).empty(); ++n) {
        std::istringstream words(text);
        std::string option;
        std::string kind;
        words >> option >> kind >> std::ws;
        std::string what;
        std::getline(words, what, '\0'); // line ends too, which no value has
        if (option == "dhcp-option" && (kind == "DNS" || kind == "DNS6")) {
            const bool good = isIpv4(what) || isIpv6(what);
            (good ? offer.nameServers : offer.problems).push_back(good ? what : "no address: " + shown(what));
        } else if (option == "dhcp-option" && (kind == "DOMAIN" || kind == "DOMAIN-SEARCH")) {
            (isDomain(what) ? offer.domains : offer.problems)
                .push_back(isDomain(what) ? what : "no domain: " + shown(what));
        }
    }
}

/// Through a proxy the address is the proxy's.
void readRemotes(Offer &offer)
{
    std::string name;
    for (int n = 1; !(name = value("remote_" + std::to_string(n))).empty(); ++n) {
        const std::string number = '_' + std::to_string(n);
        if (name == offer.server ||
            !(value("http_proxy_server" + number) + value("socks_proxy_server" + number)).empty()) {
            offer.names.clear();
            return;
        }
        if (isDomain(name) && !isIpv4(name)) {
            offer.names.insert(name);
        }
    }
}

void readRoutes(Offer &offer)
{
    std::map<uint64_t, uint64_t> ranges; // ends, by beginnings
    std::string network;
    for (int n = 1; !(network = value("route_network_" + std::to_string(n))).empty(); ++n) {
        const auto subnet = subnetOf(network, value("route_netmask_" + std::to_string(n)));
        if (!subnet) {
            offer.problems.push_back("no destination: " + shown(network));
        } else if (!offer.netGateway.empty() && value("route_gateway_" + std::to_string(n)) == offer.netGateway) {
            offer.ordinary.insert(subnet->text);
        } else {
            offer.taken.push_back(subnet->text);
            ranges[subnet->first] = std::max(ranges[subnet->first], subnet->end);
        }
    }
    uint64_t covered = 0;
    for (const auto &[first, end] : ranges) {
        covered = first <= covered ? std::max(covered, end) : covered;
    }
    offer.takesAll = value("redirect_gateway") == "1" || covered > UINT32_MAX;
    for (int n = 1; !(network = value("route_ipv6_network_" + std::to_string(n))).empty(); ++n) {
        const size_t slash = network.find('/');
        if (slash != std::string::npos && isIpv6(network.substr(0, slash)) && isNumber(network.substr(slash + 1))) {
            offer.taken.push_back(network);
        }
    }
    offer.hasRoutes = offer.takesAll || !(value("route_vpn_gateway") + value("route_ipv6_network_1")).empty();
}

template <typename Texts> std::string listOf(const Texts &destinations)
{
    std::string list;
    size_t count = 0;
    for (const std::string &each : destinations) {
        list += count == 0 ? "" : ", ";
        if (count++ == kMostTold) {
            return list + "...";
        }
        list += each;
    }
    return list;
}

} // namespace

std::string pastTunnel(const Offer &offer)
{
    const std::string ordinary = listOf(offer.ordinary);
    if (offer.takesAll) {
        return ordinary.empty() ? "nothing" : ordinary;
    }
    return offer.taken.empty() ? "all" : "all but " + listOf(offer.taken) + (ordinary.empty() ? "" : "; " + ordinary);
}

std::optional<Subnet> subnetOf(const std::string &network, const std::string &mask)
{
    in_addr binary = {};
    const std::optional<int> length = prefixLength(mask);
    if (inet_pton(AF_INET, network.c_str(), &binary) != 1 || !length) {
        return {};
    }
    const uint64_t size = uint64_t(1) << (32 - *length);
    const uint64_t first = ntohl(binary.s_addr) & ~(size - 1);
    binary.s_addr = htonl(uint32_t(first));
    char text[INET_ADDRSTRLEN] = "";
    inet_ntop(AF_INET, &binary, text, sizeof text);
    return Subnet{text + ('/' + std::to_string(*length)), first, first + size};
}

Offer readOffer()
{
    Offer offer;
    const std::string device = value("dev");
    const bool isName = !device.empty() && device.size() < IFNAMSIZ && device.find('/') == std::string::npos &&
                        std::all_of(device.begin(), device.end(), [](char c) { return c > ' ' && c <= '~'; });
    if (isName && device != "." && device != "..") {
        offer.device = device;
    } else {
        offer.problems.push_back("no interface name: " + shown(device));
    }
    offer.process = int(std::strtol(value("daemon_pid").c_str(), nullptr, 10));
    offer.server = address("trusted_ip").empty() ? address("trusted_ip6") : address("trusted_ip");
    offer.netGateway = isIpv4(value("route_net_gateway")) ? value("route_net_gateway") : std::string();
    readPushedNames(offer);
    readRemotes(offer);
    readRoutes(offer);
    return offer;
}
