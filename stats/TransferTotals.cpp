#include "stats/TransferTotals.h"

#include "common/AppPath.h"
#include "common/StateFile.h"
#include "names/StateFiles.h"

#include <QFile>

void TransferCounters::add(quint64 received, quint64 sent)
{
    totalReceived += received;
    totalSent += sent;
    sessionReceived += received;
    sessionSent += sent;
    dayReceived += received;
    daySent += sent;
    monthReceived += received;
    monthSent += sent;
}

bool TransferCounters::rollOver(const QDate &today)
{
    const bool newDay = day != today.day();
    const bool newMonth = month != today.month();
    if (newDay) {
        dayReceived = daySent = 0;
        day = today.day();
    }
    if (newMonth) {
        monthReceived = monthSent = 0;
        month = today.month();
    }
    return newDay || newMonth;
}

void GetTotalDataTransfer(quint64 &totalReceived, quint64 &totalSent, qint32 &day, quint64 &dayReceived,
                          quint64 &daySent, qint32 &month, quint64 &monthReceived, quint64 &monthSent)
{
    QFile file(appPath(kTransferFile));
    if (!file.open(QIODevice::ReadOnly)) {
        totalReceived = totalSent = 0;
        return;
    }
    QDataStream stream(&file);
    stream.setVersion(kStreamVersion);
    stream >> totalReceived >> totalSent >> day >> dayReceived >> daySent >> month >> monthReceived >> monthSent;
}

void UpdateTotalDataTransfer(quint64 received, quint64 sent, const QDate &today)
{
    TransferCounters stored;
    GetTotalDataTransfer(stored.totalReceived, stored.totalSent, stored.day, stored.dayReceived, stored.daySent,
                         stored.month, stored.monthReceived, stored.monthSent);
    stored.rollOver(today);
    stored.add(received, sent);

    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(kStreamVersion);
    stream << stored.totalReceived << stored.totalSent << stored.day << stored.dayReceived << stored.daySent
           << stored.month << stored.monthReceived << stored.monthSent;
    writeWhole(appPath(kTransferFile), bytes);
}
