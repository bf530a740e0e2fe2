#include "helpers/tools/KernelRoutes.h"

#include <algorithm>
#include <arpa/inet.h>
#include <fstream>
#include <linux/route.h>
#include <optional>
#include <sstream>

namespace {

/// The kernel prints an address as the hexadecimal value of its four bytes in memory.
std::string dotted(in_addr_t address)
{
    char text[INET_ADDRSTRLEN] = "";
    in_addr binary{};
    binary.s_addr = address;
    inet_ntop(AF_INET, &binary, text, sizeof text);
    return text;
}

std::optional<KernelRoute> parseLine(const std::string &line)
{
    std::istringstream fields(line);
    KernelRoute route;
    in_addr_t destination = 0;
    in_addr_t gateway = 0;
    in_addr_t mask = 0;
    unsigned flags = 0;
    unsigned references = 0;
    unsigned uses = 0;
    fields >> route.interface >> std::hex >> destination >> gateway >> flags >> std::dec >> references >> uses >>
        route.metric >> std::hex >> mask;
    if (!fields || (flags & RTF_UP) == 0 || (flags & RTF_REJECT) != 0) {
        return {};
    }
    route.destination = dotted(destination);
    route.mask = dotted(mask);
    route.gateway = (flags & RTF_GATEWAY) != 0 ? dotted(gateway) : std::string();
    return route;
}

} // namespace

std::vector<KernelRoute> readKernelRoutes(std::istream &table)
{
    std::vector<KernelRoute> routes;
    std::string line;
    while (std::getline(table, line)) {
        if (std::optional<KernelRoute> route = parseLine(line)) {
            routes.push_back(std::move(*route));
        }
    }
    std::stable_sort(routes.begin(), routes.end(),
                     [](const KernelRoute &a, const KernelRoute &b) { return a.metric < b.metric; });
    return routes;
}

std::vector<KernelRoute> kernelRoutes()
{
    std::ifstream table("/proc/net/route");
    return readKernelRoutes(table);
}
