#include "diag/SpeedTest.h"

#include <limits>

int downloadSpeed(qint64 bytes, qint64 elapsedMs)
{
    constexpr qint64 largest = std::numeric_limits<int>::max();
    return bytes == 0 ? -1 : static_cast<int>(qMin(bytes / qMax(elapsedMs, Q_INT64_C(1)), largest));
}

QString speedCell(int speed)
{
    return speed < 0 ? QStringLiteral("Canceled") : QString::number(speed) + QLatin1String("KB/s");
}
