#pragma once

#include <optional>
#include <string>
#include <string_view>

// What is let through of texts that come from outside.

/// True for a control character of ASCII, blanks of a line such as the tab included.
constexpr bool isControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

/// True when the text has a control character, a line end too.
bool hasControl(std::string_view text);

/// True when the text is UTF-8. The process's LC_CTYPE must be C.UTF-8.
bool isUtf8(const std::string &text);

/// True for an IPv4 address as four decimal numbers.
bool isIpv4(const std::string &text);

/// The number of leading one bits of a dotted mask ("255.255.255.0" gives 24); no value when the ones are not leading
/// or the text is no address.
std::optional<int> prefixLength(const std::string &mask);

/// True for an IPv6 address without a zone.
bool isIpv6(const std::string &text);

/// True for what can name a host, to judge by its characters: a name or an address, with a port behind a colon or
/// without; never an option.
bool isHost(std::string_view text);

/// True for decimal digits alone.
bool isNumber(std::string_view text);

/// True for a port's number, 1 to 65535.
bool isPort(std::string_view text);
