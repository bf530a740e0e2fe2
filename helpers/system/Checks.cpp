#include "helpers/system/Checks.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstdlib>

constexpr std::string_view kDigits = "0123456789";

bool hasControl(std::string_view text)
{
    return std::any_of(text.begin(), text.end(), isControl);
}

bool isUtf8(const std::string &text)
{
    return mbstowcs(nullptr, text.c_str(), 0) != static_cast<size_t>(-1);
}

static bool isAddress(int family, const std::string &text)
{
    in6_addr address = {};
    return inet_pton(family, text.c_str(), &address) == 1 && text.find('\0') == std::string::npos;
}

bool isIpv4(const std::string &text)
{
    return isAddress(AF_INET, text);
}

bool isIpv6(const std::string &text)
{
    return isAddress(AF_INET6, text);
}

std::optional<int> prefixLength(const std::string &mask)
{
    in_addr binary{};
    if (inet_pton(AF_INET, mask.c_str(), &binary) != 1) {
        return {};
    }
    const uint32_t bits = ntohl(binary.s_addr);
    const uint32_t zeros = ~bits;
    return (zeros & (zeros + 1)) == 0 ? std::optional(__builtin_popcount(bits)) : std::nullopt;
}

bool isHost(std::string_view text)
{
    constexpr size_t kLongest = 253;
    constexpr std::string_view kAllowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-_:";
    return !text.empty() && text.size() <= kLongest && text.front() != '-' &&
           text.find_first_not_of(kAllowed) == std::string_view::npos;
}

bool isNumber(std::string_view text)
{
    return !text.empty() && text.find_first_not_of(kDigits) == std::string_view::npos;
}

bool isPort(std::string_view text)
{
    constexpr long kLargest = 65535;
    if (!isNumber(text) || text.size() > 5) {
        return false;
    }
    const long port = std::strtol(std::string(text).c_str(), nullptr, 10);
    return port > 0 && port <= kLargest;
}
