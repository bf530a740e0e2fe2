#pragma once

#include <string>
#include <vector>

/// The login items of a list in the old property-list form:
///     ({Hide = 0; Path = "/home/ada/Korvan.app";},{Hide = 0; Path = "/opt/Korvan.app";})
struct LoginItems
{
    std::vector<std::string> bundles;  ///< the paths of the application bundles, each once
    std::vector<std::string> problems; ///< a line for each entry that can not be understood or started
};

/// Reads a list. A backslash in a path stands for itself: whoever writes the list does not escape.
LoginItems parseLoginItems(const std::string &list);

/// The name, in the autostart folder, of the desktop entry for a bundle; the same for the same path.
std::string desktopEntryName(const std::string &bundle);

/// A desktop entry that starts the bundle's program with its window hidden; the package's one through its launcher.
std::string desktopEntry(const std::string &bundle);

/// True for a desktop entry that desktopEntry() made, to judge by name and content.
bool isOwnDesktopEntry(const std::string &name, const std::string &content);
