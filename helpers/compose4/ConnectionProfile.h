#pragma once

#include <string>

/// A kind of system VPN service that this helper manages: what the caller calls it and how NetworkManager knows it.
struct Service
{
    const char *type;    ///< the caller's name of the type
    const char *name;    ///< the connection profile's name
    const char *uuid;    ///< the connection profile's identity
    const char *plugin;  ///< NetworkManager's name of the plug-in; null: the type is connected without NetworkManager
    const char *package; ///< the package that brings the plug-in
};

/// The service of this type, or of this profile name; null when there is none.
const Service *serviceOfType(const std::string &type);
const Service *serviceNamed(const std::string &name);

/// The connection profile as a keyfile (nm-settings-keyfile(5)), without user and password. `psk` is used by L2TP.
std::string profileText(const Service &service, const std::string &server, const std::string &psk);

/// The keyfile with `key` of [`group`] set to `value`, or without the key when `value` is empty. The group must be
/// there.
std::string withValue(const std::string &text, const std::string &group, const std::string &key,
                      const std::string &value);

/// The value of `key` in [`group`] of a keyfile that withValue() has written; empty when it is not there.
std::string valueOf(const std::string &text, const std::string &group, const std::string &key);

/// Where the profile lies: in memory only, so that it is gone after a restart of the machine.
std::string profilePath(const Service &service);

/// Reads the stored profile; empty when there is none.
std::string readProfile(const Service &service);

/// Replaces the stored profile in one step, readable by root alone. Returns whether it could.
bool writeProfile(const Service &service, const std::string &text);
