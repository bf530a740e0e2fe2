#include "helpers/tools/IpRoute.h"
#include "helpers/system/Run.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <sstream>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

/// Words of "ip route" output that tell a route's present state; "ip route add" does not know them.
constexpr std::array<const char *, 9> kStateWords = {"dead",       "linkdown", "unresolved",
                                                     "offload",    "trap",     "offload_failed",
                                                     "rt_offload", "rt_trap",  "rt_offload_failed"};

bool isStateWord(const std::string &word)
{
    return word == "\\" || std::find(kStateWords.begin(), kStateWords.end(), word) != kStateWords.end();
}

ifreq requestFor(const std::string &interface)
{
    ifreq request{};
    std::strncpy(request.ifr_name, interface.c_str(), IFNAMSIZ - 1);
    return request;
}

/// Point-to-point links are tunnels that carry packets of the network layer; a tunnel that carries Ethernet frames is
/// known by its driver.
bool isTunnel(const std::string &interface)
{
    const int fd = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq flags = requestFor(interface);
    const bool pointToPoint = ioctl(fd, SIOCGIFFLAGS, &flags) == 0 && (flags.ifr_flags & IFF_POINTOPOINT) != 0;
    ethtool_drvinfo driver{};
    driver.cmd = ETHTOOL_GDRVINFO;
    ifreq query = requestFor(interface);
    query.ifr_data = reinterpret_cast<char *>(&driver);
    const bool tap = ioctl(fd, SIOCETHTOOL, &query) == 0 && std::strcmp(driver.driver, "tun") == 0;
    close(fd);
    return pointToPoint || tap;
}

} // namespace

RouteWords splitWords(const std::string &line)
{
    std::istringstream stream(line);
    RouteWords words;
    std::string word;
    while (stream >> word) {
        words.push_back(word);
    }
    return words;
}

std::string joinWords(const RouteWords &words)
{
    std::string line;
    for (const std::string &word : words) {
        line += (line.empty() ? "" : " ") + word;
    }
    return line;
}

std::vector<std::string> valuesAfter(const RouteWords &route, const std::string &key)
{
    std::vector<std::string> values;
    for (size_t i = 0; i + 1 < route.size(); ++i) {
        if (route[i] == key) {
            values.push_back(route[i + 1]);
        }
    }
    return values;
}

std::vector<RouteWords> mainTable()
{
    const RunResult listing = runToEnd({kIpTool, "-o", "-4", "route", "show", "table", "main"});
    std::vector<RouteWords> routes;
    std::istringstream lines(listing.output);
    std::string line;
    while (std::getline(lines, line)) {
        RouteWords words = splitWords(line);
        words.erase(std::remove_if(words.begin(), words.end(), isStateWord), words.end());
        routes.push_back(std::move(words));
    }
    return routes;
}

std::string changeRouting(const RouteWords &words)
{
    std::vector<std::string> command = {kIpTool, "-4"};
    command.insert(command.end(), words.begin(), words.end());
    const RunResult result = runToEnd(command);
    if (result.status == 0) {
        return {};
    }
    std::string reason = result.errors.substr(0, result.errors.find('\n'));
    for (const char *prefix : {"RTNETLINK answers: ", "Error: "}) {
        if (reason.rfind(prefix, 0) == 0) {
            reason.erase(0, std::strlen(prefix));
        }
    }
    return reason.empty() ? "ip ended with status " + std::to_string(result.status) : reason;
}

std::string changeRoute(const char *action, const RouteWords &route, const std::string &table)
{
    RouteWords words = {"route", action, route[0], "table", table};
    // ip prints a next hop object's gateway and interface beside its number, but takes only the number.
    const bool hasObject = !valuesAfter(route, "nhid").empty();
    for (size_t i = 1; i < route.size(); ++i) {
        if (hasObject && (route[i] == "via" || route[i] == "dev")) {
            ++i;
        } else {
            words.push_back(route[i]);
        }
    }
    return changeRouting(words);
}

bool isDefaultRoute(const RouteWords &route)
{
    return !route.empty() && route[0] == "default";
}

bool leadsIntoTunnel(const RouteWords &route)
{
    const std::vector<std::string> interfaces = valuesAfter(route, "dev");
    return std::all_of(interfaces.begin(), interfaces.end(), isTunnel);
}

bool hasUplinkRoute()
{
    const std::vector<RouteWords> table = mainTable();
    return std::any_of(table.begin(), table.end(),
                       [](const RouteWords &route) { return isDefaultRoute(route) && !leadsIntoTunnel(route); });
}
