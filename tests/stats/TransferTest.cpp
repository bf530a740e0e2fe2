#include "common/AppPath.h"
#include "stats/TransferTotals.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

#include <QDir>

using Fields = QVector<quint64>;

/// What is read of the file, in its order, into variables that hold 7.
static Fields stored()
{
    TransferCounters c{7, 7, 7, 7, 7, 7, 7, 7, 7, 7};
    GetTotalDataTransfer(c.totalReceived, c.totalSent, c.day, c.dayReceived, c.daySent, c.month, c.monthReceived,
                         c.monthSent);
    return {c.totalReceived, c.totalSent,      quint64(c.day),  c.dayReceived,
            c.daySent,       quint64(c.month), c.monthReceived, c.monthSent};
}

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

    void fileIsByteForByte()
    {
        UpdateTotalDataTransfer(0x0102030405060708, 9, QDate(2026, 10, 31));
        UpdateTotalDataTransfer(1, 2, QDate(2026, 10, 31));
        const QByteArray both = "0102030405060709000000000000000b";
        QCOMPARE(fileBytes(m_path).toHex(), both + "0000001f" + both + "0000000a" + both);
    }

    void rollOver()
    {
        const std::tuple<const char *, QDate, quint64, quint64> cases[] = {
            {"next day", {2026, 5, 6}, 10, 110},
            {"next month", {2026, 6, 1}, 10, 10},
            {"same day number of another month", {2026, 6, 5}, 110, 10},
            {"same month number a year later", {2027, 5, 7}, 10, 110},
        };
        for (const auto &[name, next, day, month] : cases) {
            QFile::remove(m_path);
            UpdateTotalDataTransfer(100, 200, QDate(2026, 5, 5));
            UpdateTotalDataTransfer(10, 20, next);
            const Fields expected{110,   220,      quint64(next.day()), day, 2 * day, quint64(next.month()),
                                  month, 2 * month};
            COMPARE_CASE(name, stored(), expected);
        }
    }

    void missingOrCutFileOrAFolder()
    {
        const Fields untouched{0, 0, 7, 7, 7, 7, 7, 7};
        QCOMPARE(stored(), untouched);
        for (int length = 0; length < 56; ++length) {
            putFile(m_path, QByteArray(length, '\x01'));
            const Fields fields = stored();
            QCOMPARE(fields[0], length < 8 ? 0 : Q_UINT64_C(0x0101010101010101));
            QCOMPARE(fields[2], length < 20 ? 0 : Q_UINT64_C(0x01010101));
            QCOMPARE(fields[7], Q_UINT64_C(0));
        }
        QFile::remove(m_path);
        QDir().mkpath(m_path);
        UpdateTotalDataTransfer(1, 1);
        QCOMPARE(stored(), untouched);
    }
};

QTEST_GUILESS_MAIN(TransferTest)
#include "TransferTest.moc"
