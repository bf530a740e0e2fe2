#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the window may ask for: one of the bundle's helpers, by its name on a fixed list, and that helper's
/// arguments, which the helper itself checks.
struct Request
{
    std::string program;                ///< the path of what is started, below the bundle
    bool isScript = false;              ///< it is a script for bash
    std::vector<std::string> arguments; ///< without the program's name
};

/// The longest request, in bytes, and the most arguments.
constexpr size_t kLongestRequest = 16 * 1024;
constexpr size_t kMostArguments = 64;

/// Takes a message of the window apart: the helper's name and its arguments, each ended by a NUL. Nothing for
/// anything else.
std::optional<Request> parseRequest(std::string_view message);
