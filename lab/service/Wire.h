#pragma once

#include <string>

/// One end of a wire: a device of the network namespace of that name.
struct WireEnd
{
    std::string space;
    std::string device;
};

/// Makes two devices that carry to each other what is sent into them, for as long as it runs: "tap" with Ethernet
/// frames, or "tun", which are point-to-point. Prints "ready" once both are there. Returns only on failure, after one
/// line on standard error.
void carry(const std::string &kind, const WireEnd &one, const WireEnd &other);
