#pragma once

#include "helpers/compose4/ConnectionProfile.h"

/// Each returns what to print, which holds "Success" when it worked and "Error" and the reason when it did not.

/// Creates or updates the service's connection profile.
std::string setUp(const Service &service, const std::string &server, const std::string &psk);

/// Removes the connection profile, disconnecting it first; without one there is nothing to do.
std::string removeService(const Service &service);

/// Connects. A rejected user name or password gives "691" as well. After a failure nothing is left half open.
std::string dial(const Service &service, const std::string &user, const std::string &password);

/// Disconnects; a dial under way is ended.
std::string hangUp(const Service &service);

/// "Recv n" and "Send n", the bytes of the tunnel's interface, each on a line of its own, and "Success" while it is
/// up.
std::string check(const Service &service);
