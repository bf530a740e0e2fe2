#include "account/PublicIp.h"
#include "account/Updates.h"
#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

#include <QDir>

/// What the service's answers mean, without any request.
class ServiceTest : public QObject
{
    Q_OBJECT

private slots:
    void ipPage()
    {
        const std::pair<QByteArray, const char *> cases[] = {
            {"<h1>You are in Examplia? Your IP: 203.0.113.5</h1>\r\n", "Examplia|203.0.113.5"},
            {"You? IP: 1</h1>", "u|1"},              // no "in"
            {"in A. IP: 1</h1>", "A. IP: 1</h1>|1"}, // no question mark
            {"in A? IP 1</h1>", "A|n A? IP 1"},      // no colon
            {"in A? IP: 1", "A|1"},                  // no end
            {"</h1>in A? IP: 1</h1>", "A|1</h1>"},
            {"", "|"},
        };
        for (const auto &[page, expected] : cases) {
            const PublicIp ip = cutIpPage(page);
            COMPARE_CASE(page, ip.country + '|' + ip.address, expected);
        }
    }

    void updateDescription()
    {
        const QByteArray mac = "<update><system>macos</system>";
        const QByteArray starts = QByteArray("<update>").repeated(1300000); // cost one pass
        const std::tuple<const char *, QByteArray, const char *> cases[] = {
            {"ten megabytes of start tags", starts + "</update>", "1|||"},
            {"the first of two entries for this system",
             fileBytes(KORVAN_SOURCE "/tests/data/account/update.xml").replace("\n", "\r\n"),
             "1|2.5.0|https://portal.korvan.example/korvan-2.5.0.zip|Version 2.5.0 mends the tray menu."},
            {"end tag missing", mac + "<version>2</version>", "1|||"},
            {"runs into the next entry", "<update><version>1</version>" + mac + "<url>u</url></update>", "1|1|u|"},
            {"tags missing", mac + "2</version><url>u</update>", "1|||"},
            {"no version, then one", mac + "</update>" + mac + "<version>2</version></update>", "1|||"},
        };
        for (const auto &[name, page, expected] : cases) {
            const UpdateDescription update = readUpdateDescription(page);
            const QString number = QString::number(update.hasEntries);
            COMPARE_CASE(name, QStringList({number, update.version, update.url, update.message}).join('|'), expected);
        }
    }

    void refreshTime()
    {
        const QDateTime now(QDate(2026, 6, 15), QTime(12, 0), Qt::UTC);
        QCOMPARE(nextRefresh(2, now.addDays(3), now), now.addDays(3)); // nearer than the choice's interval
        QCOMPARE(nextRefresh(2, now, now), now.addDays(7));
        const QDateTime wrapped = *nextRefresh(4, now, now); // into the far past
        QVERIFY(wrapped < now.addYears(-1000000));
        QDir().mkpath(appPath("/cfg"));
        writeNextRefresh(wrapped);
        QCOMPARE(readNextRefresh(), wrapped);
        const QByteArray whole = fileBytes(appPath("/cfg/update"));
        for (int length = 0; length < whole.size(); ++length) {
            putFile(appPath("/cfg/update"), whole.left(length));
            QVERIFY(!readNextRefresh().isValid());
        }
    }
};

QTEST_GUILESS_MAIN(ServiceTest)
#include "ServiceTest.moc"
