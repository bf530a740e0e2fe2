// "netstat -r" in the form that the program reads: a line per route, the default ones beginning with "default" and
// the gateway. Linux' own resolves the gateway's name, which takes seconds when no name server can be reached.

#include "helpers/system/Run.h"
#include "helpers/tools/RouteTable.h"

#include <cstdio>
#include <netinet/in.h>
#include <string>

namespace {

void printRoutes()
{
    std::printf("Routing tables\n\nInternet:\n%-19s %-16s %-7s %s\n", "Destination", "Gateway", "Metric", "Netif");
    for (const TableLine &line : routingTable()) {
        char destination[INET_ADDRSTRLEN + sizeof "/32"] = "default";
        if (!isDefault(line.route)) {
            nl_addr2str(rtnl_route_get_dst(line.route.get()), destination, sizeof destination);
        }
        // A route without a gateway shows its interface by number, so that nobody takes a name for an address.
        const std::string gateway = line.gateway.empty() ? "link#" + std::to_string(line.link) : line.gateway;
        std::printf("%-19s %-16s %-7u %s\n", destination, gateway.c_str(), line.metric, line.interface.c_str());
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
