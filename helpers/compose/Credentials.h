#pragma once

#include <optional>
#include <string>

/// Prints the prompts that the engine waits for and reads a line for each from the descriptor, which end with "\n" or
/// "\r\n". Returns them as the two lines of OpenVPN's credential file, byte for byte. Nothing, and a reason, when an
/// answer is missing, empty, too long, or holds a line end or another control character.
std::optional<std::string> askCredentials(int input, int output, std::string &error);
