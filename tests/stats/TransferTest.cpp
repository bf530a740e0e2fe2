#include "common/AppPath.h"
#include "stats/TransferTotals.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

#include <QDir>

/// What is read of the file, in its order, into variables that hold 7.
static QString stored()
{
    TransferCounters c{7, 7, 7, 7, 7, 7, 7, 7, 7, 7};
    GetTotalDataTransfer(c.totalReceived, c.totalSent, c.day, c.dayReceived, c.daySent, c.month, c.monthReceived,
                         c.monthSent);
    const QString day = QString("%1 %2 %3 ").arg(c.day).arg(c.dayReceived).arg(c.daySent);
    return QString("%1 %2 ").arg(c.totalReceived).arg(c.totalSent) + day +
           QString("%1 %2 %3").arg(c.month).arg(c.monthReceived).arg(c.monthSent);
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
        const std::tuple<const char *, QDate, const char *> cases[] = {
            {"next day", {2026, 5, 6}, "110 220 6 10 20 5 110 220"},
            {"next month", {2026, 6, 1}, "110 220 1 10 20 6 10 20"},
            {"same day number of another month", {2026, 6, 5}, "110 220 5 110 220 6 10 20"},
        };
        for (const auto &[name, next, expected] : cases) {
            QFile::remove(m_path);
            UpdateTotalDataTransfer(100, 200, QDate(2026, 5, 5));
            UpdateTotalDataTransfer(10, 20, next);
            COMPARE_CASE(name, stored(), expected);
        }
    }

    void missingOrCutFile()
    {
        for (int length = 0; length < 56; ++length) {
            putFile(m_path, QByteArray(length, '\x01'));
            const QStringList fields = stored().split(' ');
            QCOMPARE(fields.first() + fields.last(), QString(length < 8 ? "00" : "723401728380766730"));
        }
        QFile::remove(m_path);
        QCOMPARE(stored(), QString("0 0 7 7 7 7 7 7"));
    }
};

QTEST_GUILESS_MAIN(TransferTest)
#include "TransferTest.moc"
