#pragma once

#include <string>
#include <vector>

/// What the program asks for: "--user U --password P SERVER --log-level N --debug PPPD-OPTIONS...".
struct SstpRequest
{
    std::string user;
    std::string password;
    std::string server;
    std::string logLevel = "0";
    std::vector<std::string> linkOptions; ///< for pppd
    std::string problem;                  ///< set when the arguments can not be used; a line for the user
};

/// Understands the program's arguments. Only the pppd options that the program uses are let through, because pppd has
/// others that run commands.
SstpRequest parseSstpArguments(const std::vector<std::string> &arguments);

/// The command line of sstpc for it. pppd reads the password from the descriptor `passwordFd`, which it inherits
/// through sstpc: sstpc's own --password shows it in the process list and breaks on a quote.
std::vector<std::string> sstpcCommand(const SstpRequest &request, int passwordFd);
