#pragma once

#include "helpers/compose/Profile.h"

/// What the command line sets itself, so that the profile's own directives for it are left out.
struct Overrides
{
    bool credentials = false;
    bool proxy = false;
};

struct FilteredProfile
{
    std::vector<Directive> directives;
    std::vector<std::string> notes; ///< what was left out and why, one log line each
    bool asksCredentials = false;   ///< it wants a user name and a password and names no file
};

/// Keeps what a profile may say, leaves out what it needs not, and refuses it altogether, with a reason that names
/// line and directive, for what loads code, writes files, opens control, leaves the folder, or is on no list.
std::optional<FilteredProfile> filterProfile(const std::vector<Directive> &directives, Overrides overrides,
                                             std::string &error);

/// True when the text holds a user name and a password as OpenVPN reads them from a file: one each on the first two
/// lines, neither empty. For anything less OpenVPN asks on its console and waits.
bool holdsCredentials(std::string_view text);
