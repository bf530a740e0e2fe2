#pragma once

#include "helpers/system/Descriptor.h"

#include <optional>
#include <string>
#include <sys/types.h>

/// Puts aside all that this process has from the person who started it: descriptors other than the standard input,
/// terminal, working folder, limits, timers, signal settings, environment; and becomes root for good. Returns a
/// descriptor that becomes readable when somebody asks this process to end.
Descriptor startClean();

/// The user whose window is at the other end of the standard input: whoever got root's rights for this process, and
/// made that socket. Nothing, and a reason, when there is no such socket, or it is somebody else's.
std::optional<uid_t> personAtTheWindow(std::string &reason);

/// The lock on the machine's tunnel, held as long as the result lives: for `person`, whose number others read from
/// it. An earlier window of the same person gets a moment to end. Without it, -1, and `holder` is who has it.
Descriptor lockTunnel(uid_t person, std::optional<uid_t> &holder);
