#pragma once

#include "platform/Refusal.h"

#include <QStringList>

#include <vector>

// Where this process gets done what only root can. Started by root, it does so itself. In every other start of a
// bundle that nobody but root can change, the window is the person's own process, and the bundle's program "broker"
// is the part of it that is root: it starts the helpers for the window, and ends with it.

/// Whether root itself started the program. Whoever got root's rights for it is no longer root by then.
bool isStartedByRoot();

/// Whether that program starts the helpers, in this start.
bool usesRootPart();

/// Takes over the socket of a root part that was started before the first call into Qt.
void takeRootPart(int socket);

/// Makes sure that there is somebody to start helpers with root's rights. Where a root part is missing, asks polkit
/// for one, which may ask a person; waits for that in a local event loop. GUI thread. Returns why there is none, or
/// an empty refusal.
Refusal askForRoot();

/// Whether this process can do what needs root, itself or through a root part that it has asked for. Started by root,
/// the whole process becomes root (setuid) if it is not yet.
bool hasRoot();

/// Asks the root part to start a helper by its name. `channel` is a socket whose other end gives it the standard
/// streams and hears of its end; without one the helper is left to itself. False when there is no root part. Callable
/// from any thread.
bool requestHelper(const QString &name, const QStringList &arguments, int channel = -1);

/// Sends one message with copies of these descriptors, at most four, over a SOCK_SEQPACKET socket. False when it
/// could not be sent.
bool sendWithDescriptors(int socket, QByteArray text, const std::vector<int> &descriptors);

/// Why no update of the program is downloaded or installed in this start; an empty refusal where that is done.
Refusal whyNoUpdates();
