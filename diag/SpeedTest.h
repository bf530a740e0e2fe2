#pragma once

#include <QString>

/// The speed of a download in whole bytes per millisecond; -1 when nothing was received. A time below 1 ms counts as
/// 1 ms.
int downloadSpeed(qint64 bytes, qint64 elapsedMs);

/// The table's text for a speed: "812KB/s", or "Canceled" below 0.
QString speedCell(int speed);
