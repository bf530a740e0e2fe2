#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QString>

/// The stream version of every state file under "/cfg". Files of one build must read in another, so it never changes.
constexpr QDataStream::Version kStreamVersion = QDataStream::Qt_5_2;

/// The bytes of the file at `path`; empty when there is no such file or it can not be read.
QByteArray readWhole(const QString &path);

/// Replaces the file at `path` by `bytes` in one step: after a crash it holds either the old content or the new one.
/// The file gets mode 0600. A path that is a symbolic link or a folder is refused, because a root process must not
/// write where somebody else points. Returns false, with one log line that names the file and the reason, on failure.
bool writeWhole(const QString &path, const QByteArray &bytes);
