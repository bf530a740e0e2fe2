#pragma once

#include "helpers/compose4/Profile.h"

#include <csignal>

/// Set once the process was asked to end: a dial under way is given up.
extern volatile sig_atomic_t g_stop;

/// Each returns what to print, which holds "Success" when it worked and "Error" and the reason when it did not.

/// Creates or updates the service's connection profile.
QByteArray setUp(const Service &service, const QByteArray &server, const QByteArray &psk);

/// Removes the connection profile, disconnecting it first; without one there is nothing to do.
QByteArray remove(const Service &service);

/// Connects. A rejected user name or password gives "691" as well. After a failure nothing is left half open.
QByteArray dial(const Service &service, const QByteArray &user, const QByteArray &password);

/// Disconnects; a dial under way is given up.
QByteArray hangUp(const Service &service);

/// "Recv n" and "Send n", the bytes since the connection came up, each on a line of its own, and "Success" while it
/// is up.
QByteArray check(const Service &service);
