#pragma once

#include <QString>

class QNetworkReply;

/// How much is taken of what comes from outside. What goes past a limit is given up or left out, with a line in the
/// log.
constexpr int kProfileLimit = 64 << 20;  ///< bytes of the account's profile
constexpr int kArchiveLimit = 256 << 20; ///< bytes of an update of the program
constexpr int kPageLimit = 1 << 20;      ///< bytes of any other page, and of a file of a profile
constexpr int kShownLimit = 4096;        ///< characters of a text that is shown
constexpr int kShownLines = 24;          ///< lines of it: a box must fit on the screen, with its button
constexpr int kListLimit = 100000;       ///< entries of a list
constexpr int kL2tpListBytes = 16 << 20; ///< bytes of the L2TP list
constexpr int kVersionLimit = 64;        ///< characters of a version
constexpr int kAddressLimit = 2048;      ///< characters of a web address

/// Ends the reply as soon as its body is longer than `limit` bytes, or says that it will be.
void limitBody(QNetworkReply &reply, qint64 limit);

/// The beginning of a text from outside, as much of it as may be shown. What was cut off is marked by "...".
QString shownText(const QString &text);

/// The first `limit` bytes of a file that a profile has brought; empty when it can not be read.
QByteArray readFromProfile(const QString &path, qint64 limit = kPageLimit);
