#include "account/Login.h"
#include "account/PublicIp.h"
#include "account/Updates.h"
#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

#include <QDir>

/// What goes to the service and what its answers mean, without any request.
class ServiceTest : public QObject
{
    Q_OBJECT

private slots:
    void login()
    {
        QCOMPARE(loginBody("anna", "[P]&=+ é~._-%"),
                 QByteArray("username=anna&password=%5BP%5D%26%3D%2B%20%C3%A9~._-%25"));
        const std::tuple<QByteArray, bool, LoginReply> cases[] = {
            {"PK\3\4", true, LoginReply::Profile}, // broken off
            {"", false, LoginReply::NoAnswer},
            {"", true, LoginReply::Malformed},
            {"PK invalid username or password", false, LoginReply::Rejected},
            {"Invalid username or password", false, LoginReply::Malformed},
        };
        for (const auto &[body, networkError, reply] : cases) {
            COMPARE_CASE(body, int(classifyLogin({body, networkError})), int(reply));
        }
    }

    void ipPage()
    {
        const std::pair<QByteArray, const char *> cases[] = {
            {"<h1>You are in Examplia? Your IP: 203.0.113.5</h1>\r\n", "Examplia|203.0.113.5"},
            {"in Größe? : 1</h", "Größe|1"},
            {"in A? x: 1 y: 2</h1>", "A|2"},
            {"Begin in A? : 1</h1>", "in A|1"},
            {"You? IP: 1</h1>", "u|1"},              // no "in"
            {"in A. IP: 1</h1>", "A. IP: 1</h1>|1"}, // no question mark
            {"in A? IP 1</h1>", "A|n A? IP 1"},      // no colon
            {"in A? IP: 1", "A|1"},                  // no end
            {"</h1>in A? IP: 1</h1>", "A|1</h1>"},
            {"", "|"},
            {"x", "|"},
        };
        for (const auto &[page, expected] : cases) {
            const PublicIp ip = cutIpPage(page);
            COMPARE_CASE(page, ip.country + '|' + ip.address, expected);
        }
    }

    void updateDescription()
    {
        const QByteArray real = fileBytes(KORVAN_SOURCE "/tests/data/account/update.xml");
        const QByteArray mac = "<update><system>macos</system>";
        const char *offer =
            "1|2.5.0|https://portal.korvan.example/korvan-2.5.0.zip|Version 2.5.0 mends the tray menu.";
        const QByteArray starts = QByteArray("<update>").repeated(1300000); // cost one pass
        const std::tuple<const char *, QByteArray, const char *> cases[] = {
            {"ten megabytes of start tags", starts, "1|||"},
            {"and an end", starts + "</update>", "1|||"},
            {"the first of two entries for this system", real, offer},
            {"line ends of DOS", QByteArray(real).replace("\n", "\r\n"), offer},
            {"other letter case", QByteArray(real).replace("macos", "macOS"), "1|||"},
            {"no entries", "<html>", "0|||"},
            {"end tag missing", mac + "<version>2</version>", "1|||"},
            {"runs into the next entry", "<update><version>1</version>" + mac + "<url>u</url></update>", "1|1|u|"},
            {"tags missing", mac + "2</version><url>u</update>", "1|||"},
            {"no version, then one", mac + "</update>" + mac + "<version>2</version></update>", "1|||"},
            {"zero byte", mac + "<version>2</version>" + QByteArray(1, '\0') + "</update>", "1|||"},
        };
        for (const auto &[name, page, expected] : cases) {
            const UpdateDescription update = readUpdateDescription(page);
            COMPARE_CASE(name,
                         QString::number(update.hasEntries) + '|' + update.version + '|' + update.url + '|' +
                             update.message,
                         expected);
        }
    }

    void refreshTime()
    {
        const QDateTime now(QDate(2026, 6, 15), QTime(12, 0), Qt::UTC);
        QCOMPARE(nextRefresh(2, now.addDays(3), now), now.addDays(3)); // nearer than the choice's interval
        QCOMPARE(nextRefresh(2, now, now), now.addDays(7));
        QCOMPARE(nextRefresh(3, QDateTime(), now), now.addDays(30));
        QVERIFY(!nextRefresh(-1, now, now).has_value() && !nextRefresh(5, now, now).has_value());
        const QDateTime wrapped = *nextRefresh(4, now, now); // into the far past
        QCOMPARE(wrapped.toMSecsSinceEpoch(), std::numeric_limits<qint64>::min() + now.toMSecsSinceEpoch() - 1);

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
