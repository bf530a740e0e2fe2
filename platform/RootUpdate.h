#pragma once

#include <QString>
#include <QStringList>

/// Lets the root part install a signed update: it gets the archive as a descriptor, checks it, and replaces the
/// bundle once this process, which is to end then, and the root part have ended. Afterwards the program is started
/// again with `arguments`, by a process of this user's in this environment, which tells it what came of the update
/// (kUpdateOutcome). Returns why the archive is not accepted, a part of a sentence, or an empty text. A local event
/// loop runs meanwhile.
QString installThroughRootPart(const QString &archive, const QByteArray &signature, const QStringList &arguments);
