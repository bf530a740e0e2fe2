#include "helpers/tools/MarkedWay.h"
#include "helpers/system/Run.h"
#include "names/Names.h"

#include <algorithm>
#include <fstream>
#include <unistd.h>

namespace {

constexpr char kNft[] = "/usr/sbin/nft";
const std::string kMark = std::to_string(kTunnelMark);
const std::string kTable = std::to_string(kTunnelTable);

std::string kernelSwitch(const std::string &interface, const char *name)
{
    return "/proc/sys/net/ipv4/conf/" + interface + "/" + name;
}

bool isOn(const std::string &path)
{
    int value = 0;
    std::ifstream(path) >> value;
    return value != 0;
}

bool setSwitch(const std::string &path, int value)
{
    std::ofstream file(path);
    file << value << std::flush;
    return file.good();
}

std::string changeRule(const char *action)
{
    return changeRouting({"rule", action, "fwmark", kMark, "lookup", kTable, "priority", kTable});
}

/// True for a route to hosts that are reached without a gateway over one of the interfaces.
bool isNeighbour(const RouteWords &route, const std::vector<std::string> &interfaces)
{
    const std::vector<std::string> own = valuesAfter(route, "dev");
    return !isDefaultRoute(route) && valuesAfter(route, "via").empty() && own.size() == 1 &&
           std::find(interfaces.begin(), interfaces.end(), own[0]) != interfaces.end();
}

void fillTable(const RouteJournal &journal, const std::vector<RouteWords> &mainTable,
               std::vector<std::string> &problems)
{
    for (const RouteWords &route : journal.routes) {
        for (const RouteWords &other : mainTable) {
            if (isNeighbour(other, valuesAfter(route, "dev"))) {
                changeRoute("replace", other, kTable);
            }
        }
        const std::string reason = changeRoute("replace", route, kTable);
        if (!reason.empty()) {
            problems.push_back("can not keep \"" + joinWords(route) + "\" for the tunnel: " + reason);
        }
    }
}

/// The packets that come in on a connection get the mark of those that went out, for the rp_filter check. A server's
/// IPv6 address is reached by marked packets too, for which the router must be found.
std::string packetRules()
{
    return "table inet korvan_lockdown\n"
           "delete table inet korvan_lockdown\n"
           "table inet korvan_lockdown {\n"
           " chain output { type filter hook output priority 0;\n"
           "  meta mark " +
           kMark +
           " ct mark set meta mark accept\n"
           "  icmpv6 type { nd-neighbor-solicit, nd-neighbor-advert, nd-router-solicit } accept\n"
           "  meta nfproto ipv6 oifname != \"lo\" meta oifkind != \"tun\" drop\n }\n"
           " chain forward { type filter hook forward priority 0;\n"
           "  meta nfproto ipv6 meta oifkind != \"tun\" drop\n }\n"
           " chain prerouting { type filter hook prerouting priority mangle;\n"
           "  ct mark " +
           kMark +
           " meta mark set ct mark\n }\n"
           "}\n";
}

} // namespace

std::set<std::string> markSwitchesFor(const std::vector<RouteWords> &routes)
{
    std::set<std::string> chosen;
    for (const RouteWords &route : routes) {
        for (const std::string &interface : valuesAfter(route, "dev")) {
            const bool checked = isOn(kernelSwitch("all", "rp_filter")) || isOn(kernelSwitch(interface, "rp_filter"));
            if (checked && !isOn(kernelSwitch(interface, "src_valid_mark"))) {
                chosen.insert(interface);
            }
        }
    }
    return chosen;
}

std::vector<std::string> openMarkedWay(const RouteJournal &journal, const std::vector<RouteWords> &mainTable)
{
    std::vector<std::string> problems;
    fillTable(journal, mainTable, problems);
    const std::string reason = changeRule("add");
    if (!reason.empty() && reason != kAlreadyThere) {
        problems.push_back("can not make the rule for the tunnel's packets: " + reason);
    }
    for (const std::string &interface : journal.markSwitches) {
        const std::string path = kernelSwitch(interface, "src_valid_mark");
        if (!setSwitch(path, 1)) {
            problems.push_back("can not set " + path);
        }
    }
    const RunResult rules = runToEnd({kNft, "-f", "-"}, packetRules());
    if (rules.status != 0) {
        problems.push_back("IPv6 is not blocked: " + (access(kNft, X_OK) == 0
                                                          ? rules.errors.substr(0, rules.errors.find('\n'))
                                                          : "nft is missing; it is in the package nftables"));
    }
    return problems;
}

void closeMarkedWay(const RouteJournal &journal)
{
    runToEnd({kNft, "delete", "table", "inet", "korvan_lockdown"});
    changeRule("del");
    for (const RouteWords &route : journal.routes) {
        changeRoute("del", route, kTable);
    }
    changeRouting({"route", "flush", "table", kTable});
    for (const std::string &interface : journal.markSwitches) {
        setSwitch(kernelSwitch(interface, "src_valid_mark"), 0);
    }
}
