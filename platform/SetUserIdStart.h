#pragma once

/// Makes a start safe in which an ordinary user gets root's rights, before the first call into Qt: a set-user-id
/// start, or one through pkexec, which cleans the environment but passes any arguments on. At any other start it does
/// nothing and returns false. Otherwise it
///   - opens /dev/null for each of the standard descriptors that is closed,
///   - rebuilds the environment: of the caller's only the display, the language and the time zone survive; USER
///     comes from the password database and goes on telling who the real user is; PATH is fixed, HOME does not exist,
///     and the buses of the session are out of reach,
///   - sets umask 077 and becomes root for good (setuid(0)),
/// and returns true: the caller must then hand Qt no arguments either, because Qt's own switches load code. A failure
/// prints one line and ends the process with status 1.
bool takeOverSetUserIdStart();
