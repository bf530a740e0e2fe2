#include "diag/Ping.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

/// What the table shows of a ping.
class DiagTest : public QObject
{
    Q_OBJECT

private slots:
    void ping()
    {
        const auto real = [](const char *name) {
            return fileBytes(KORVAN_SOURCE "/tests/data/diag/" + QString(name));
        };
        const std::pair<QByteArray, const char *> cases[] = {
            {real("ping-20.txt").replace("\n", "\r\n"), "23ms 25%"},
            {real("ping-dead.txt"), "N/A 100%"},
            {"2 received, 12.5% packet loss\nstddev = 1.0/2.0/3", "N/A 12.5%"}, // cut in the times
            {"stddev = 1/2/3 ms", "N/A 0%"},
            {"stddev = 0/0.99/1/0 ms", "N/A 0%"}, // below a millisecond
            {"stddev = 1/nan/1/1 ms", "N/A 0%"},
            {"stddev = 1/1e300/1/1 ms", "N/A 0%"},
            {"received, 33.33333333% packet", "N/A 33.3333%"},
        };
        for (const auto &[output, cells] : cases) {
            const PingSummary summary = parsePing(output);
            COMPARE_CASE(output, pingCell(summary.averageMs) + ' ' + lossCell(summary.loss), cells);
        }
    }
};

QTEST_GUILESS_MAIN(DiagTest)
#include "DiagTest.moc"
