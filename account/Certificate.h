#pragma once

#include <QDateTime>
#include <QString>

/// The path of a user's certificate in the unpacked profile; empty for a name that no user has.
QString certificatePath(const QString &user);

/// The expiry date of a certificate file in printed text form: what stands between the first "Not After : " and the
/// "GMT" after it, as in "Jan  5 23:59:59 2027". Empty when the file can not be read or "GMT" is missing. Without
/// "Not After : " the search for "GMT" starts at position 11, whatever stands there.
QString GetCertExpiredDateTime(QString path);

/// Whether a date text of GetCertExpiredDateTime(), which is in UTC, lies before `now`. A text that is no date counts
/// as expired, so that a damaged certificate leads to a fresh profile.
bool isExpired(const QString &dateText, const QDateTime &now);
