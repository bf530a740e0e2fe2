#include "common/Dates.h"

QDateTime GetDateTimeFromString(QString text)
{
    static const char *const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    int number = 0;
    for (const char *month : months) {
        text.replace(QLatin1String(month), QStringLiteral("%1").arg(++number, 2, 10, QLatin1Char('0')));
    }
    text.replace(QLatin1String("  "), QLatin1String(" "));
    return QDateTime::fromString(text, QStringLiteral("MM d HH:mm:ss yyyy"));
}
