#pragma once

#include <QByteArray>
#include <QString>

/// What the service's answer to a login is in place of a profile that works.
enum class ProfileAnswer {
    None,     ///< nothing was asked for, or a profile that works
    WebPage,  ///< a page, such as that of a network that wants a login of its own
    Outage,   ///< the service is out of order
    Rejected, ///< the service's words for a wrong name or password
    Damaged, ///< anything else, also a ZIP: it counts only when that could not be unpacked whole or brought no server
    Unstored, ///< a profile for which there was no room here
};

/// Tells them apart by the HTTP status and the body.
ProfileAnswer profileAnswer(int status, const QByteArray &body);

/// Moves the profile aside before a new one takes its place, where it has servers, and keeps a copy of the L2TP list
/// with it. What the clearing of the profile's folder spares, hidden entries and those with "custom" in their name,
/// stays in the folder. One that lies aside already is kept in its place: what came after it was not whole.
void keepLastProfile();

/// Deletes what was moved aside. A local event loop runs meanwhile.
void forgetLastProfile();

/// Whether a profile with servers lies aside; with a user's name, whether it is theirs.
bool hasLastProfile(const QString &user = {});

/// Puts the profile that lies aside in the place of the one that came after it; what clearing spares stays here, too.
/// False when that can not be done.
bool useLastProfile();
