#pragma once

#include <QByteArray>
#include <QString>

/// Compares dotted version numbers part by part, walking the parts of `server` only; a part that is missing or not a
/// number counts as 0, and one trailing letter of each version is dropped first. Returns the difference of the first
/// parts that differ (greater than 0: the server's version is newer), or 0 when none does or `current` is empty.
int VersionCompare(QString server, QString current);

/// The text between the first `open` and the first `close` after it; a null string when `close` is missing. A missing
/// `open` is not treated specially: the search for `close` then starts at offset length(open) - 1.
QString GetStringBetween(const QString &source, const QString &open, const QString &close);

/// Percent-encodes every byte of the text's local 8-bit form, letters and digits included.
QString UrlFormatString(const QString &text);

/// A byte count as short text: "512B", "1KB", "5000MB". Whole units, rounded down.
QString FormatDataSize(quint64 bytes);

/// The bytes up to the first NUL, or all of them, as Latin-1 text.
QString latin1UpToNul(const QByteArray &bytes);
