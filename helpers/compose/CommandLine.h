#pragma once

#include <optional>
#include <string>
#include <vector>

/// Where the program's own files lie.
struct Folders
{
    std::string bundle;
    std::string state; ///< the same folder, or the person's whose window asks
};

/// What the engine asks for.
struct CommandLine
{
    std::string config; ///< the profile, relative to the state folder
    bool askCredentials = false;
    bool noCache = false;
    std::vector<std::string> proxy; ///< "--http-proxy" or "--socks-proxy", address, port; empty: none
    bool proxyCredentials = false;  ///< the proxy wants the user name and password in kProxyLoginFile
    bool changeFolder = false;
    std::string managementPort; ///< empty: no management interface
    bool up = false;
    bool down = false;
};

/// Takes the engine's arguments (without the program's name) apart. Nothing, and a reason, for anything but the
/// options that the engine builds, each in the engine's own form and at most once. `folders` tells which
/// files the options may name.
std::optional<CommandLine> parseCommandLine(const std::vector<std::string> &arguments, const Folders &folders,
                                            std::string &error);

/// The descriptors' names for what OpenVPN reads, and what else goes with them.
struct Handover
{
    std::string config;
    std::string keyPassword;
    std::string credentials;      ///< empty: none
    std::string proxyCredentials; ///< empty: none
    bool lockedDown = false;
};

/// The command line of OpenVPN, whose program is `openVpn`. What stands before "--config" holds for <connection>
/// blocks too.
std::vector<std::string> openVpnCommand(const std::string &openVpn, const CommandLine &commandLine,
                                        const Handover &handover, const std::string &bundle);
