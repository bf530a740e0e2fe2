#pragma once

#include <QString>

/// The steps of the program's start, in the order in which main() takes them.

/// Makes UTF-8 the local 8-bit encoding whatever the environment says: a root process often has no LANG.
void useUtf8();

/// The installed version as "/version" holds it, up to the first NUL byte and not trimmed; empty when there is no
/// such file.
QString loadCurrentVersion();

/// Deletes the file at PATH_LOG, below the application folder.
void deleteOldLog();

/// Puts the bundled tools first in PATH, so that the names by which the program runs them find them.
void preferBundledTools();

/// What became of an update archive that a previous run left in "/update".
enum class PendingUpdate {
    None,          ///< there is none, or it must wait
    HelperMissing, ///< "/compose9" is missed; the archive stays
    HandedOver,    ///< the helper was started, or could not be and the user was told so
};

/// Unpacks a pending archive into the staging folder beside the bundle and starts the update helper from there, which
/// starts the program again with `argument`, or with none when that is empty. Where updates are signed the helper
/// gets the archive itself; one that it does not accept is deleted after a box has told why.
PendingUpdate installPendingUpdate(const char *argument);

/// Takes note, in the log, of what came of an update that ended with this start. Why it was not installed, a part of
/// a sentence; empty where there was none or it was. Told once: a program that this one starts does not hear of it.
QString takeUpdateFailure();

/// Deletes what an earlier update left: the archive that it was handed, and the staging folder, after taking back the
/// helper where the bundle has none.
void removeStagingFolder();

/// Undoes what a tunnel has left whose OpenVPN was killed together with the program: its name servers, without which
/// no login would get anywhere, the IPv6 block, a host route; and a lock-down that nobody ended. Tunnels that live
/// are left alone.
void cleanUpAfterTunnels();

/// The "-version" box.
void showVersion();

/// "-reset": undoes the local driver set-up, and what a crash may have left of a connection: DNS settings, a blocked
/// default route. While another Korvan has the tunnel, or root's rights are refused, a box says so instead.
void resetNetwork();
