#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

/// The address of the update description: the deployed one, or the one in the settings file.
extern QString UPDATE_URL;

/// What an update description offers to this system.
struct UpdateDescription
{
    bool hasEntries = false; ///< whether there is any entry, for whatever system
    QString version;         ///< this and the rest are empty when no entry is for this system
    QString url;             ///< of the update archive
    QString message;         ///< for the user; may be empty
    QString signature;       ///< of the archive, minisign's four lines; empty where updates are not signed
};

/// Reads an update description, which is cut by its tags and not parsed. The first "<update>" entry that holds
/// "<system>macos</system>" counts, later ones do not; a tag that is missing in it leaves its text empty. An entry
/// ends at the next "</update>", and is empty when there is none or a zero byte comes before it.
UpdateDescription readUpdateDescription(const QByteArray &page);

/// Why the body of an answer with this HTTP status can be no update archive, which is a ZIP: a part of a sentence,
/// empty where it can be one.
QString whyNoArchive(int status, const QByteArray &body);

/// The next time at which the configuration is to be refreshed, for an index of the refresh choices, or nothing for
/// an index that is none. The intervals are one row lower than their names ("Every Day" gives seven days), and "Every
/// Month" wraps around into the far past; stored times depend on both.
std::optional<QDateTime> nextRefresh(int choice, const QDateTime &stored, const QDateTime &now);

/// Stores the next refresh time in "/cfg/update"; false when it can not be written.
bool writeNextRefresh(const QDateTime &time);

/// The time stored in "/cfg/update"; invalid when there is none or it is damaged.
QDateTime readNextRefresh();
