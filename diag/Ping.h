#pragma once

#include <QByteArray>
#include <QString>

/// What the summary of a "ping" run tells.
struct PingSummary
{
    int averageMs = 0; ///< average round trip in whole milliseconds; 0 when no reply came
    double loss = 0;   ///< lost packets in per cent
};

/// Reads the output of "ping", which ends in lines such as
/// "5 packets transmitted, 4 packets received, 20.0% packet loss" and
/// "round-trip min/avg/max/stddev = 10.9/23.7/40.1/5.2 ms". What is missing or no number counts as 0.
PingSummary parsePing(const QByteArray &output);

/// The table's texts for a result: "23ms", or "N/A" below 1; and for a loss: "12.5%".
QString pingCell(int averageMs);
QString lossCell(double loss);
