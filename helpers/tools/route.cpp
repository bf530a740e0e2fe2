// "route add|delete|change|print DESTINATION mask MASK [GATEWAY]": changes say "OK!" on success and the reason
// otherwise. All of it goes to standard output, which is what the program reads and logs.

#include "helpers/network/Guardian.h"
#include "helpers/network/Network.h"
#include "helpers/system/Checks.h"
#include "helpers/system/Run.h"
#include "helpers/tools/KernelRoutes.h"

#include <csignal>
#include <cstdio>
#include <map>
#include <unistd.h>

namespace {

struct Request
{
    std::string action;
    std::string destination;
    std::string mask;
    std::string gateway; ///< empty when not given

    bool isDefault() const { return destination == "0.0.0.0" && mask == "0.0.0.0"; }
};

/// The rows of the table for this destination, in the columns destination, mask, gateway, interface, metric. Nothing
/// when there is none: the program takes any word for the gateway.
int printRoutes(const Request &request)
{
    for (const KernelRoute &route : kernelRoutes()) {
        if (route.destination == request.destination && route.mask == request.mask && !route.gateway.empty()) {
            std::printf("%-15s %-15s %-15s %-15s %u\n", route.destination.c_str(), route.mask.c_str(),
                        route.gateway.c_str(), route.interface.c_str(), route.metric);
        }
    }
    return 0;
}

bool isGateway(const Request &request)
{
    return isIpv4(request.gateway) || (request.action == "delete" && request.gateway.empty());
}

Outcome changeOrdinary(const Request &request)
{
    const auto destination = subnetOf(request.destination, request.mask);
    if (!destination) {
        return {false, {"\"" + request.destination + "\" with the mask \"" + request.mask + "\" is no destination"}};
    }
    if (!isGateway(request)) {
        return {false, {"\"" + request.gateway + "\" is no gateway address"}};
    }
    const std::map<std::string, RouteChange> changes = {
        {"add", RouteChange::Add}, {"change", RouteChange::Replace}, {"delete", RouteChange::Delete}};
    return changeOrdinaryRoute(changes.at(request.action), *destination, request.gateway);
}

Outcome change(const Request &request)
{
    if (geteuid() != 0) {
        return {false, {"only root can change routes"}};
    }
    if (!request.isDefault()) {
        return changeOrdinary(request);
    }
    // A way back is wanted whatever the gateway looks like, so only the other two insist on it.
    const Process program = programAbove();
    if (request.action == "add") {
        return unlockNetwork(request.gateway, program);
    }
    if (!isGateway(request)) {
        return {false, {"\"" + request.gateway + "\" is no gateway address"}};
    }
    if (request.action == "change") {
        return changeDefaultRoute(request.gateway);
    }
    if (program.lives()) {
        startGuardian(program); // first, so that there is no moment in which nobody would put them back
        dieWithParent(SIGKILL, program.number); // from here on the guardian undoes what this tool has done so far
    }
    return lockNetwork(request.gateway, program);
}

} // namespace

int main(int argc, char **argv)
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    const bool complete = words.size() == 4 || words.size() == 5;
    const bool known = complete && words[2] == "mask" &&
                       (words[0] == "add" || words[0] == "delete" || words[0] == "change" || words[0] == "print");
    if (!known) {
        std::puts("route: use add|delete|change|print DESTINATION mask MASK [GATEWAY]");
        return 2;
    }
    const Request request{words[0], words[1], words[3], words.size() == 5 ? words[4] : std::string()};
    if (request.action == "print") {
        return printRoutes(request);
    }
    const Outcome outcome = change(request);
    for (const std::string &note : outcome.notes) {
        std::printf("route: %s\n", note.c_str());
    }
    if (outcome.done) {
        std::puts("OK!");
    }
    return outcome.done ? 0 : 1;
}
