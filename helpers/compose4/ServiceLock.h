#pragma once

#include "helpers/compose4/ConnectionProfile.h"

/// What to do about a process that holds a service's lock.
enum class LockHolder {
    Wait, ///< wait for its end
    End,  ///< end it: it is a dial that is to be given up
};

/// Holds off all other operations on the service until this process ends. Returns false when another process still
/// holds the lock after 15 s.
bool lockService(const Service &service, LockHolder holder);
