#include "common/AppPath.h"
#include "stats/TransferTotals.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTest>

/// The eight stored fields, in file order.
struct Stored
{
    quint64 totalReceived = 0, totalSent = 0;
    qint32 day = 0;
    quint64 dayReceived = 0, daySent = 0;
    qint32 month = 0;
    quint64 monthReceived = 0, monthSent = 0;

    static Stored read(quint64 before)
    {
        const auto small = static_cast<qint32>(before);
        Stored s{before, before, small, before, before, small, before, before};
        GetTotalDataTransfer(s.totalReceived, s.totalSent, s.day, s.dayReceived, s.daySent, s.month, s.monthReceived,
                             s.monthSent);
        return s;
    }

    QVector<quint64> fields() const
    {
        return {totalReceived, totalSent,      quint64(day),  dayReceived,
                daySent,       quint64(month), monthReceived, monthSent};
    }
};

static QString path()
{
    return appPath("/cfg/transfer");
}

class TransferTest : public QObject
{
    Q_OBJECT

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
        QCOMPARE(fileBytes(path()).toHex(' ').toUpper(),
                 QByteArray("01 02 03 04 05 06 07 09 00 00 00 00 00 00 00 0B "
                            "00 00 00 1F "
                            "01 02 03 04 05 06 07 09 00 00 00 00 00 00 00 0B "
                            "00 00 00 0A "
                            "01 02 03 04 05 06 07 09 00 00 00 00 00 00 00 0B"));
        QCOMPARE(QFile::permissions(path()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    }

    void rollOver_data()
    {
        QTest::addColumn<QDate>("next");
        QTest::addColumn<quint64>("day");
        QTest::addColumn<quint64>("month");
        QTest::newRow("same day") << QDate(2026, 5, 5) << quint64(110) << quint64(110);
        QTest::newRow("next day") << QDate(2026, 5, 6) << quint64(10) << quint64(110);
        QTest::newRow("next month") << QDate(2026, 6, 1) << quint64(10) << quint64(10);
        QTest::newRow("same day number of another month") << QDate(2026, 6, 5) << quint64(110) << quint64(10);
        QTest::newRow("same month number a year later") << QDate(2027, 5, 7) << quint64(10) << quint64(110);
    }
    void rollOver()
    {
        QFETCH(QDate, next);
        QFETCH(quint64, day);
        QFETCH(quint64, month);
        UpdateTotalDataTransfer(100, 200, QDate(2026, 5, 5));
        UpdateTotalDataTransfer(10, 20, next);
        const Stored s = Stored::read(0);
        QCOMPARE(s.fields(), (QVector<quint64>{110, 220, quint64(next.day()), day, 2 * day, quint64(next.month()),
                                               month, 2 * month}));
    }

    /// The counters shown lose the bytes of the call in which the calendar turns; the stored ones keep them.
    void shownCountersAddFirst()
    {
        TransferCounters shown;
        shown.rollOver(QDate(2026, 5, 5));
        shown.add(100, 200);
        QVERIFY(!shown.rollOver(QDate(2026, 5, 5)));
        shown.add(10, 20);
        QVERIFY(shown.rollOver(QDate(2026, 5, 6)));
        QCOMPARE(shown.dayReceived, quint64(0));
        QCOMPARE(shown.monthSent, quint64(220));
        QCOMPARE(shown.totalReceived, quint64(110));
        QCOMPARE(shown.sessionSent, quint64(220));
    }

    void missingOrUnreadableFile()
    {
        const auto check = [](const char *what) {
            const QVector<quint64> untouched{0, 0, 7, 7, 7, 7, 7, 7};
            QVERIFY2(Stored::read(7).fields() == untouched, what);
        };
        check("missing");
        QDir().mkpath(path());
        check("a folder");
        UpdateTotalDataTransfer(1, 1);
        QVERIFY(QFileInfo(path()).isDir());
        QDir(appPath("/cfg")).removeRecursively();
        UpdateTotalDataTransfer(1, 1);
        QVERIFY(!QFile::exists(path()));
    }

    void everyTruncation()
    {
        const QByteArray whole(56, '\x01');
        for (int length = 0; length < whole.size(); ++length) {
            putFile(path(), whole.left(length));
            const Stored s = Stored::read(7);
            QCOMPARE(s.totalReceived, length < 8 ? quint64(0) : quint64(0x0101010101010101));
            QCOMPARE(s.day, length < 20 ? 0 : 0x01010101);
            QCOMPARE(s.monthSent, quint64(0));
        }
    }
};

QTEST_GUILESS_MAIN(TransferTest)
#include "TransferTest.moc"
