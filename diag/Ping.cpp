#include "diag/Ping.h"

#include "common/Text.h"

#include <QStringList>

#include <cmath>
#include <limits>

PingSummary parsePing(const QByteArray &output)
{
    const QString text = latin1UpToNul(output);
    const QString times = GetStringBetween(text, QStringLiteral("stddev = "), QStringLiteral(" ms"));
    const QStringList parts = times.split(QLatin1Char('/'));
    const double average = parts.size() == 4 ? parts.at(1).toDouble() : 0;
    const bool fits = std::abs(average) < std::numeric_limits<int>::max();
    PingSummary summary;
    summary.averageMs = fits ? static_cast<int>(average) : 0;
    summary.loss = GetStringBetween(text, QStringLiteral("received, "), QStringLiteral("% packet")).toDouble();
    return summary;
}

QString pingCell(int averageMs)
{
    return averageMs < 1 ? QStringLiteral("N/A") : QString::number(averageMs) + QLatin1String("ms");
}

QString lossCell(double loss)
{
    return QString::number(loss) + QLatin1Char('%');
}
