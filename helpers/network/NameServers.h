#pragma once

#include <string>
#include <vector>

/// The name servers that a tunnel brings.
struct NameServers
{
    std::vector<std::string> addresses;
    std::vector<std::string> domains;
};

/// Who looks after the machine's name servers.
enum class Resolver { None, Resolved, Resolvconf, File };

/// Sets the name servers with whoever looks after them. Returns who did, None on a failure.
Resolver setNameServers(const std::string &device, const NameServers &servers);

/// Takes them back from a resolver service. The file is put back by restoreNameServerFile().
void dropNameServers(Resolver resolver, const std::string &device);

/// Writes /etc/resolv.conf where it does not hold these name servers, and keeps what stood there, be it a link.
/// False, with errno set, on a failure.
bool setNameServerFile(const NameServers &servers);

/// Puts back what stood in /etc/resolv.conf before. What somebody else has written there since is newer, and stays.
void restoreNameServerFile();
