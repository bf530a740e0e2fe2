#pragma once

#include <string>

/// Whether this is what the plug-in for L2TP writes for strongSwan when it connects with the pre-shared key `psk`:
/// that key, in Base64. Another connection's key gives false.
bool isPluginKey(const std::string &secrets, const std::string &psk);

/// Removes the file that the plug-in leaves on the disk, when the key in it is this one. Nothing happens without a
/// key, or to somebody who is not root.
void forgetPluginKey(const std::string &psk);
