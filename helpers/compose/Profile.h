#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One directive of an OpenVPN profile, taken apart.
struct Directive
{
    int line = 0;                     ///< where it begins in the profile, from 1
    std::vector<std::string> words;   ///< its name, without a leading "--", then its parameters
    std::optional<std::string> block; ///< the lines of an inline block other than <connection>
    std::vector<Directive> inner;     ///< the directives of a <connection> block
    bool optional = false;            ///< behind "setenv opt": OpenVPN may skip it

    const std::string &name() const { return words.front(); }
    bool isBlock() const { return block.has_value() || !inner.empty(); }
};

/// The longest line that OpenVPN 2.6 reads from an option file, without its line end.
constexpr size_t kMaxOptionLine = 254;

/// Splits one line into words as OpenVPN does: blanks separate, "#" and ";" at the start of a word begin a comment, a
/// backslash outside single quotes may stand before a blank, a double quote or itself. Nothing, and a reason, when
/// OpenVPN would not take the line, or might not take it as it looks.
std::optional<std::vector<std::string>> splitOptionLine(std::string_view line, std::string &error);

/// Takes a whole profile apart. Nothing, and a reason that names the line, when it is not one.
std::optional<std::vector<Directive>> parseProfile(std::string_view text, std::string &error);

/// A word as OpenVPN must find it in an option file or in a script's command line to read just this word.
std::string quoteWord(const std::string &word);

/// The profile in one fixed form that can be read in only one way. Nothing, and a reason, when a line is too long.
std::optional<std::string> renderProfile(const std::vector<Directive> &directives, std::string &error);

/// "profile line 12: " followed by the reason.
std::string atLine(int line, const std::string &reason);
