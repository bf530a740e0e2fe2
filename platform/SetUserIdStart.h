#pragma once

/// Ends root's rights in a set-user-id start (the real and the effective user differ), before the first call into Qt;
/// at any other start it does nothing. Where nobody but root can change the program, its root part is started first,
/// with nothing of this process' environment; otherwise the window does without one. Then this process is the real
/// user's for good. Returns the socket to the root part, or -1. A failure prints one line and ends the process with
/// status 1.
int dropSetUserId();
