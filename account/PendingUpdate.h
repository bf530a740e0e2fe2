#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Whether the updater installs signed updates only: whether the bundle has keys for it.
bool updatesAreSigned();

/// Leaves an update in "/update", where the next start installs it, in the place of an older one there. Where updates
/// are signed the updater checks it first; what it does not accept is deleted again. Returns a part of a sentence
/// that says why it is not there, or an empty text. A local event loop runs meanwhile.
QString storeUpdate(const QByteArray &archive, const QString &signature);

/// What the updater says of the signed update that waits in "/update": a part of a sentence, empty when it accepts
/// it.
QString whyNotAccepted();

/// Hands the waiting signed update to the root part, which installs it once this program has ended and has it started
/// again with `arguments`. Returns why it does not, a part of a sentence, or an empty text. A local event loop runs
/// meanwhile.
QString giveUpdateToRootPart(const QStringList &arguments);

/// Hands the waiting signed update to the updater, which installs it once this program has ended. False when it can
/// not be started. The update is out of "/update" then, so that a failure is not met again at every start.
bool handOverSignedUpdate();

/// Deletes an update that was handed over or not accepted.
void removeHandedOverUpdate();
