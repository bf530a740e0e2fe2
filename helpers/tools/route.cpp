// "route add|delete|change|print DESTINATION mask MASK [GATEWAY]": changes say "OK!" on success and the reason
// otherwise. All of it goes to standard output, which is what the program reads and logs.

#include "helpers/network/Guardian.h"
#include "helpers/network/Network.h"
#include "helpers/system/Checks.h"
#include "helpers/system/Run.h"
#include "helpers/tools/RouteTable.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <map>
#include <unistd.h>

namespace {

/// The rows of the table for this destination, in the columns destination, mask, gateway, interface, metric. Nothing
/// when there is none: the program takes any word for the gateway.
int printRoutes(const std::string &destination, const std::string &mask)
{
    const auto subnet = subnetOf(destination, mask);
    const Route asked = subnet ? routeTo(subnet->text, {}, RTPROT_UNSPEC) : nullptr;
    for (const TableLine &line : asked ? routingTable() : std::vector<TableLine>()) {
        if (hasSameDestination(line.route, asked) && !line.gateway.empty()) {
            std::printf("%-15s %-15s %-15s %-15s %u\n", destination.c_str(), mask.c_str(), line.gateway.c_str(),
                        line.interface.c_str(), line.metric);
        }
    }
    return 0;
}

/// An ordinary route, or another gateway for the default route with the lowest metric.
Outcome changeOne(const std::string &action, const Subnet &destination, const std::string &gateway)
{
    static const std::map<std::string, RouteChange> kChanges = {
        {"add", RouteChange::Add}, {"change", RouteChange::Replace}, {"delete", RouteChange::Delete}};
    const bool toAll = destination.text == "0.0.0.0/0";
    const std::vector<Route> routes = routesOf(AF_INET);
    const auto current = std::find_if(routes.begin(), routes.end(), isDefault);
    if (toAll && current == routes.end()) {
        return outcomeOf("there is no default route to change");
    }
    const uint8_t protocol = action == "delete" ? RTPROT_UNSPEC : RTPROT_BOOT;
    const Route route =
        toAll ? routeTo({}, gateway, rtnl_route_get_protocol(current->get()), rtnl_route_get_priority(current->get()))
              : routeTo(destination.text, gateway, protocol);
    const std::string reason = changeRoute(kChanges.at(action), route);
    return outcomeOf(reason.empty() ? reason : "can not " + action + ' ' + destination.text + ": " + reason);
}

Outcome change(const std::string &action, const std::string &network, const std::string &mask,
               const std::string &gateway)
{
    const Process program = programAbove();
    const auto destination = subnetOf(network, mask);
    const bool toAll = network == "0.0.0.0" && mask == "0.0.0.0";
    if (geteuid() != 0) {
        return outcomeOf("only root can change routes");
    }
    // A way back is wanted whatever the gateway looks like, so only the others insist on it.
    if (toAll && action == "add") {
        return unlockNetwork(gateway, program);
    }
    if (!destination) {
        return outcomeOf("\"" + network + "\" with the mask \"" + mask + "\" is no destination");
    }
    if (!isIpv4(gateway) && (action != "delete" || !gateway.empty())) {
        return outcomeOf("\"" + gateway + "\" is no gateway address");
    }
    if (!toAll || action == "change") {
        return changeOne(action, *destination, gateway);
    }
    if (program.lives()) {
        startGuardian(program); // first, so that there is no moment in which nobody would put them back
        dieWithParent(SIGKILL, program.number); // from here on the guardian undoes what this tool has done so far
    }
    return lockNetwork(program);
}

} // namespace

int main(int argc, char **argv)
{
    std::vector<std::string> words(argv + 1, argv + argc);
    const bool isComplete = words.size() == 4 || words.size() == 5;
    const std::string action = isComplete && words[2] == "mask" ? words[0] : "";
    words.resize(5);
    if (action == "print") {
        return printRoutes(words[1], words[3]);
    }
    if (action != "add" && action != "delete" && action != "change") {
        std::puts("route: use add|delete|change|print DESTINATION mask MASK [GATEWAY]");
        return 2;
    }
    const Outcome outcome = change(action, words[1], words[3], words[4]);
    for (const std::string &note : outcome.notes) {
        std::printf("route: %s\n", note.c_str());
    }
    if (outcome.done) {
        std::puts("OK!");
    }
    return outcome.done ? 0 : 1;
}
