#pragma once

#include <QDate>
#include <QtGlobal>

/// The controller's byte counters. Every one counts up; the day's and the month's start anew when the calendar does.
struct TransferCounters
{
    quint64 totalReceived = 0;
    quint64 totalSent = 0;
    quint64 sessionSent = 0; ///< since the program started; never stored
    quint64 sessionReceived = 0;
    quint64 daySent = 0;
    quint64 dayReceived = 0;
    quint64 monthSent = 0;
    quint64 monthReceived = 0;
    qint32 day = 0;   ///< day of the month, 1 to 31, that the day counters belong to
    qint32 month = 0; ///< 1 to 12, that the month counters belong to

    /// Adds to all four pairs.
    void add(quint64 received, quint64 sent);

    /// Zeroes the day's and the month's counters that belong to another day or month than `today`, and returns
    /// whether any did. Only the numbers are compared, never the full date: what was counted on the 5th of one month
    /// goes on counting on the 5th of another.
    bool rollOver(const QDate &today);
};

/// Reads the stored totals from "/cfg/transfer". Fields that a short file lacks read as 0. When the file can not be
/// opened only the two totals become 0 and the rest stays as the caller had it.
void GetTotalDataTransfer(quint64 &totalReceived, quint64 &totalSent, qint32 &day, quint64 &dayReceived,
                          quint64 &daySent, qint32 &month, quint64 &monthReceived, quint64 &monthSent);

/// Adds bytes to the totals in "/cfg/transfer", after starting a new day or month there. The file is 56 bytes long:
/// the fields in the order of GetTotalDataTransfer(), big-endian. A file that can not be written is left.
void UpdateTotalDataTransfer(quint64 received, quint64 sent, const QDate &today = QDate::currentDate());
