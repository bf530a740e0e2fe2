#include "diag/Ping.h"
#include "diag/SpeedTest.h"
#include "tests/support/TestFiles.h"

#include <QTest>

class DiagTest : public QObject
{
    Q_OBJECT

private slots:
    void ping_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QString>("ping");
        QTest::addColumn<QString>("loss");
        const QString data = QStringLiteral(KORVAN_SOURCE "/tests/data/diag/");
        QTest::newRow("four probes") << fileBytes(data + "ping-20.txt") << "23ms"
                                     << "25%";
        QTest::newRow("line ends of DOS") << fileBytes(data + "ping-20.txt").replace("\n", "\r\n") << "23ms"
                                          << "25%";
        QTest::newRow("never answered") << fileBytes(data + "ping-dead.txt") << "N/A"
                                        << "100%";
        QTest::newRow("cut in the times") << QByteArray("2 received, 12.5% packet loss\nstddev = 1.0/2.0/3") << "N/A"
                                          << "12.5%";
        QTest::newRow("three times") << QByteArray("received, 0% packet\nstddev = 1/2/3 ms") << "N/A"
                                     << "0%";
        QTest::newRow("five times") << QByteArray("stddev = 1/2/3/4/5 ms") << "N/A"
                                    << "0%";
        QTest::newRow("an empty time") << QByteArray("stddev = 9//9/9 ms") << "N/A"
                                       << "0%";
        QTest::newRow("below a millisecond") << QByteArray("stddev = 0/0.99/1/0 ms") << "N/A"
                                             << "0%";
        QTest::newRow("no number of milliseconds") << QByteArray("stddev = 1/nan/1/1 ms") << "N/A"
                                                   << "0%";
        QTest::newRow("too large") << QByteArray("stddev = 1/1e300/1/1 ms") << "N/A"
                                   << "0%";
        QTest::newRow("six digits") << QByteArray("received, 33.33333333% packet") << "N/A"
                                    << "33.3333%";
        QTest::newRow("words") << QByteArray("ping: unknown host \xff") << "N/A"
                               << "0%";
    }
    void ping()
    {
        QFETCH(QByteArray, output);
        const PingSummary summary = parsePing(output);
        QTEST(pingCell(summary.averageMs), "ping");
        QTEST(lossCell(summary.loss), "loss");
    }

    void speed()
    {
        QCOMPARE(speedCell(downloadSpeed(0, 100)), QString("Canceled"));
        QCOMPARE(speedCell(downloadSpeed(999, 1000)), QString("0KB/s"));
        QCOMPARE(speedCell(downloadSpeed(812999, 1000)), QString("812KB/s"));
        QCOMPARE(downloadSpeed(5000, 0), 5000);
        QCOMPARE(downloadSpeed(5000, -3), 5000);
        QCOMPARE(downloadSpeed(Q_INT64_C(1) << 40, 1), 0x7fffffff);
    }
};

QTEST_GUILESS_MAIN(DiagTest)
#include "DiagTest.moc"
