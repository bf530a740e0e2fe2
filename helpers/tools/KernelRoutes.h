#pragma once

#include <istream>
#include <string>
#include <vector>

/// One usable IPv4 route of the kernel's main table.
struct KernelRoute
{
    std::string destination; ///< dotted
    std::string mask;        ///< dotted
    std::string gateway;     ///< dotted; empty for a route without a gateway
    std::string interface;
    unsigned metric = 0;

    bool isDefault() const { return destination == "0.0.0.0" && mask == "0.0.0.0"; }
};

/// Reads a table in the form of /proc/net/route, lowest metric first; routes that are down or reject packets are left
/// out, and so are lines that can not be understood. No name is resolved.
std::vector<KernelRoute> readKernelRoutes(std::istream &table);

/// The routes of the calling process' network.
std::vector<KernelRoute> kernelRoutes();
