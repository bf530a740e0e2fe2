#include "common/AppPath.h"
#include "stats/TransferTotals.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTest>

class TransferTest : public QObject
{
    Q_OBJECT

    const QString m_path = appPath("/cfg/transfer");

private slots:
    void init()
    {
        QDir(appPath("/cfg")).removeRecursively();
        QDir().mkpath(appPath("/cfg"));
    }

    /// Totals, day, month: byte for byte.
    void fileRollsOver()
    {
        UpdateTotalDataTransfer(0x0102030405060708, 9, QDate(2026, 10, 31));
        UpdateTotalDataTransfer(1, 2, QDate(2026, 10, 31));
        const QByteArray both = "0102030405060709000000000000000b";
        QCOMPARE(fileBytes(m_path).toHex(), both + "0000001f" + both + "0000000a" + both);
        const QByteArray none(32, '0');
        UpdateTotalDataTransfer(0, 0, QDate(2026, 12, 31)); // the same day number of another month
        QCOMPARE(fileBytes(m_path).toHex(), both + "0000001f" + both + "0000000c" + none);
        const QByteArray one = "00000000000000010000000000000000";
        UpdateTotalDataTransfer(1, 0, QDate(2026, 12, 5));
        QCOMPARE(fileBytes(m_path).toHex().mid(32), "00000005" + one + "0000000c" + one);
    }

    void missingOrCutFile()
    {
        TransferCounters c;
        const auto read = [&c] {
            c = {7, 7, 7, 7, 7, 7, 7, 7, 7, 7};
            GetTotalDataTransfer(c.totalReceived, c.totalSent, c.day, c.dayReceived, c.daySent, c.month,
                                 c.monthReceived, c.monthSent);
        };
        for (int length = 0; length < 56; ++length) {
            putFile(m_path, QByteArray(length, '\x01'));
            read();
            QCOMPARE(c.totalReceived, quint64(length < 8 ? 0 : 0x0101010101010101));
            QCOMPARE(c.day, length < 20 ? 0 : 0x01010101);
            QCOMPARE(c.monthSent, quint64(0));
        }
        QFile::remove(m_path);
        read();
        QVERIFY(c.totalReceived + c.totalSent == 0 && c.day == 7 && c.daySent == 7 && c.monthReceived == 7);
    }
};

QTEST_GUILESS_MAIN(TransferTest)
#include "TransferTest.moc"
