#include "common/Dates.h"

#include <QStringList>

QDateTime GetDateTimeFromString(QString text)
{
    static const char *const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    int number = 0;
    for (const char *month : months) {
        text.replace(QLatin1String(month), QStringLiteral("%1").arg(++number, 2, 10, QLatin1Char('0')));
    }
    text.replace(QLatin1String("  "), QLatin1String(" "));
    // Date and time are read apart: together they are a local time, and there is none in an hour that clocks skip.
    const QStringList parts = text.split(QLatin1Char(' '));
    const QDate date =
        QDate::fromString(parts.value(0) + QLatin1Char(' ') + parts.value(1) + QLatin1Char(' ') + parts.value(3),
                          QStringLiteral("MM d yyyy"));
    const QTime time = QTime::fromString(parts.value(2), QStringLiteral("HH:mm:ss"));
    return parts.size() == 4 && date.isValid() && time.isValid() ? QDateTime(date, time, Qt::UTC) : QDateTime();
}
