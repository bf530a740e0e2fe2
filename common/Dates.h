#pragma once

#include <QDateTime>
#include <QString>

/// The date-time of a text made of an English three-letter month name, the day, the time and the year
/// ("Oct  9 12:00:00 2026"), in UTC; invalid when the text is anything else.
QDateTime GetDateTimeFromString(QString text);
