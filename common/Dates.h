#pragma once

#include <QDateTime>
#include <QString>

/// The date-time of a text made of an English three-letter month name, the day, the time and the year
/// ("Oct  9 12:00:00 2026"); invalid when the text is anything else. The value carries no time zone of its own:
/// callers that know one set it.
QDateTime GetDateTimeFromString(QString text);
