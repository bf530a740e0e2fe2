#pragma once

#include "helpers/system/Descriptor.h"

#include <optional>
#include <string>
#include <sys/types.h>

/// Puts aside all that this process has from the person who started it: descriptors other than the standard input,
/// terminal, working folder, limits, timers, signal settings, environment; and becomes root for good. Returns a
/// descriptor that becomes readable when somebody asks this process to end.
Descriptor startClean();

/// The window at the other end of the standard input.
struct Window
{
    uid_t person = 0;   ///< its user's number
    Descriptor process; ///< becomes readable with its end
};

/// The window of whoever got root's rights for this process, and made the socket at its standard input. Nothing, and
/// a reason, when there is no such socket, it is somebody else's, or its maker has ended.
std::optional<Window> findWindow(std::string &reason);

/// The lock on the machine's tunnel, held as long as the result lives: for `person`, whose number others read from
/// it. An earlier window of the same person gets a moment to end. Without it, -1, and `holder` is who has it.
Descriptor lockTunnel(uid_t person, std::optional<uid_t> &holder);
