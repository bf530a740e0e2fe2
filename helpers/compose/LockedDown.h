#pragma once

#include "helpers/compose/Profile.h"

#include <map>

/// Names of servers and the address that each had when it was last connected to.
using Addresses = std::map<std::string, std::string>;

/// The lines "name address" of up.sh's record. Lines that are not of this form are skipped.
Addresses parseAddresses(const std::string &text);

/// up.sh's record; empty when there is none, or when anybody but root could have written it.
Addresses lastAddresses();

/// Whether the name leads to an address now; waits about a second for a name server that does not answer.
bool canBeResolved(const std::string &name);

/// Puts the last known address in place of each server's name that can not be resolved while the machine is locked
/// down. Returns one log line for each.
std::vector<std::string> replaceNames(std::vector<Directive> &directives, const Addresses &addresses,
                                      bool (*resolves)(const std::string &name));
