#pragma once

#include "helpers/network/Offer.h"

/// Who looks after the machine's name servers.
enum class Resolver { None, Resolved, Resolvconf, File };

/// Sets the name servers that a tunnel offers with whoever looks after them. Returns who did, None on a failure.
Resolver setNameServers(const Offer &offer);

/// Takes them back from a resolver service. The file is put back by restoreNameServerFile().
void dropNameServers(Resolver resolver, const std::string &device);

/// Writes /etc/resolv.conf where it does not hold these name servers, and keeps what stood there, be it a link.
/// False, with errno set, on a failure.
bool setNameServerFile(const Offer &offer);

/// Puts back what stood in /etc/resolv.conf before. What somebody else has written there since is newer, and stays.
void restoreNameServerFile();
