#pragma once

#include <QString>

/// Why an update is not accepted or was not installed, as this program or the updater says it, in the person's
/// language. What is not known here, as an error of the system's, stays as it is. The log tells reasons in English.
QString translatedReason(const QString &reason);
