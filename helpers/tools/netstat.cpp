// "netstat -r" in the form that the program reads: a line per route, the default ones beginning with "default" and
// the gateway. Linux' own resolves the gateway's name, which takes seconds when no name server can be reached.

#include "helpers/system/Checks.h"
#include "helpers/system/Run.h"
#include "helpers/tools/KernelRoutes.h"

#include <cstdio>
#include <net/if.h>
#include <string>

namespace {

/// A route without a gateway shows its interface by number, so that nobody takes an interface's name for an address.
std::string gatewayColumn(const KernelRoute &route)
{
    return route.gateway.empty() ? "link#" + std::to_string(if_nametoindex(route.interface.c_str())) : route.gateway;
}

std::string destinationColumn(const KernelRoute &route)
{
    return route.isDefault() ? "default"
                             : route.destination + "/" + std::to_string(prefixLength(route.mask).value_or(0));
}

void printRoutes()
{
    std::printf("Routing tables\n\nInternet:\n%-19s %-16s %-7s %s\n", "Destination", "Gateway", "Metric", "Netif");
    for (const KernelRoute &route : kernelRoutes()) {
        std::printf("%-19s %-16s %-7u %s\n", destinationColumn(route).c_str(), gatewayColumn(route).c_str(),
                    route.metric, route.interface.c_str());
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && std::string(argv[1]) == "-r") {
        printRoutes();
        return 0;
    }
    std::vector<std::string> command(argv, argv + argc);
    command[0] = "/usr/bin/netstat";
    becomeTool(command);
    std::fputs("netstat: only -r is built in; for the rest install the package net-tools\n", stderr);
    return 1;
}
