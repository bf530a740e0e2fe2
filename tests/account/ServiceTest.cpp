#include "account/Login.h"
#include "account/PublicIp.h"
#include "account/Updates.h"
#include "account/WebPage.h"
#include "common/AppPath.h"
#include "tests/support/OnePage.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTest>

static const QDateTime kNow(QDate(2026, 6, 15), QTime(12, 0), Qt::UTC);

/// A settings file is read anew only when its time or size has changed, and two tests can meet within one clock tick.
static void useApi(const QString &url)
{
    static int length = 0;
    putFile(appPath("/setting.ini"), "[LOGIN]\nVER=" + url.toLatin1() + "\n;" + QByteArray(++length, '-') + '\n');
}

class ServiceTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QFile::remove(appPath("/setting.ini")); }

    void loginRequest()
    {
        const OnePage service(ok("PK.."));
        useApi(service.url());
        const QByteArray body = loginBody("anna", QString::fromUtf8("[PASSWORD]&=+ é~._-%"));
        const LoginAnswer answer = postLogin(body);
        QCOMPARE(answer.body, QByteArray("PK.."));
        QVERIFY(!answer.networkError);
        const QByteArray form = "username=anna&password=%5BPASSWORD%5D%26%3D%2B%20%C3%A9~._-%25";
        QVERIFY(service.request.startsWith("POST /api HTTP/1.1\r\n"));
        QVERIFY(service.request.contains("Content-Type: application/x-www-form-urlencoded\r\n"));
        QVERIFY(service.request.contains("Content-Length: " + QByteArray::number(form.size()) + "\r\n"));
        QVERIFY(service.request.endsWith("\r\n\r\n" + form));
    }

    void loginReply_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<bool>("endless");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("reply");
        const auto row = [](const char *name, const QByteArray &answer, bool endless, int size, LoginReply reply) {
            QTest::newRow(name) << answer << endless << size << static_cast<int>(reply);
        };
        row("profile", ok("PK\3\4..."), false, 7, LoginReply::Profile);
        row("empty", ok(""), false, 0, LoginReply::NoAnswer);
        row("silent", "", true, 0, LoginReply::NoAnswer);
        row("stops half-way", ok("PK\3\4...").chopped(2), true, 0, LoginReply::NoAnswer);
        row("truncated", ok("PK\3\4...").chopped(2), false, 5, LoginReply::Profile);
        row("reset", "", false, 0, LoginReply::Malformed);
        row("rejection in a page", ok("<p>Sorry, invalid username or password!</p>"), false, 43,
            LoginReply::Rejected);
        row("rejection in an archive", ok("PK invalid username or password"), false, 31, LoginReply::Rejected);
        row("other letter case", ok("Invalid username or password"), false, 28, LoginReply::Malformed);
        row("one letter", ok("P"), false, 1, LoginReply::Malformed);
        row("error page", "HTTP/1.1 500 Oh\r\nContent-Length: 3\r\n\r\nbad", false, 3, LoginReply::Malformed);
    }
    void loginReply()
    {
        QFETCH(QByteArray, answer);
        QFETCH(bool, endless);
        const OnePage service(answer, endless);
        useApi(service.url());
        const LoginAnswer got = postLogin("x=y", endless ? 300 : kLoginLimitMs);
        QTEST(got.body.size(), "size");
        QTEST(static_cast<int>(classifyLogin(got)), "reply");
    }

    void page()
    {
        const QByteArray large(3000000, 'x');
        QCOMPARE(GetPageDataByUrl(OnePage(ok(large)).url()), large);
        QCOMPARE(GetPageDataByUrl(OnePage(ok(large).chopped(1)).url()), QByteArray());
        QCOMPARE(GetPageDataByUrl(OnePage("HTTP/1.1 404 No\r\nContent-Length: 2\r\n\r\nno").url()), QByteArray());
        QCOMPARE(GetPageDataByUrl("http://127.0.0.1:1/"), QByteArray());
        QCOMPARE(GetPageDataByUrl(""), QByteArray());
    }

    void ipPage_data()
    {
        QTest::addColumn<QByteArray>("page");
        QTest::addColumn<QString>("country");
        QTest::addColumn<QString>("address");
        QTest::newRow("whole") << QByteArray("<h1>You are in Examplia? Your IP: 203.0.113.5</h1>\r\n") << "Examplia"
                               << "203.0.113.5";
        QTest::newRow("accents") << QByteArray("in Größe? : 1</h") << QString::fromUtf8("Größe") << "1";
        QTest::newRow("two colons") << QByteArray("in A? x: 1 y: 2</h1>") << "A"
                                    << "2";
        QTest::newRow("an earlier in") << QByteArray("Begin in A? : 1</h1>") << "in A"
                                       << "1";
        QTest::newRow("no in") << QByteArray("You? IP: 1</h1>") << "u"
                               << "1";
        QTest::newRow("no question mark") << QByteArray("in A. IP: 1</h1>") << "A. IP: 1</h1>"
                                          << "1";
        QTest::newRow("no colon") << QByteArray("in A? IP 1</h1>") << "A"
                                  << "n A? IP 1";
        QTest::newRow("no end") << QByteArray("in A? IP: 1") << "A"
                                << "1";
        QTest::newRow("end first") << QByteArray("</h1>in A? IP: 1</h1>") << "A"
                                   << "1</h1>";
        QTest::newRow("empty") << QByteArray() << ""
                               << "";
        QTest::newRow("one letter") << QByteArray("x") << ""
                                    << "";
    }
    void ipPage()
    {
        QFETCH(QByteArray, page);
        const PublicIp ip = cutIpPage(page);
        QTEST(ip.country, "country");
        QTEST(ip.address, "address");
    }

    void updateDescription_data()
    {
        QTest::addColumn<QByteArray>("page");
        QTest::addColumn<bool>("hasEntries");
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("url");
        const QByteArray real = fileBytes(KORVAN_SOURCE "/tests/data/account/update.xml");
        const QString url = "https://portal.korvan.example/korvan-2.5.0.zip";
        const QByteArray mac = "<system>macos</system>";
        QTest::newRow("real") << real << true << "2.5.0" << url;
        QTest::newRow("line ends of DOS") << QByteArray(real).replace("\n", "\r\n") << true << "2.5.0" << url;
        QTest::newRow("other letter case") << QByteArray(real).replace("macos", "macOS") << true << ""
                                           << "";
        QTest::newRow("no entries") << QByteArray("<html>") << false << ""
                                    << "";
        QTest::newRow("end tag missing") << "<update>" + mac + "<version>2</version>" << true << ""
                                         << "";
        QTest::newRow("runs into the next entry")
            << "<update><version>1</version><update>" + mac + "<url>u</url></update>" << true << "1"
            << "u";
        QTest::newRow("tags missing") << "<update>" + mac + "2</version><url>u</update>" << true << ""
                                      << "";
        QTest::newRow("no version, then one")
            << "<update>" + mac + "</update><update>" + mac + "<version>2</version></update>" << true << ""
            << "";
        QTest::newRow("zero byte") << "<update>" + mac + "<version>2</version>" + QByteArray(1, '\0') + "</update>"
                                   << true << ""
                                   << "";
    }
    void updateDescription()
    {
        QFETCH(QByteArray, page);
        const UpdateDescription description = readUpdateDescription(page);
        QTEST(description.hasEntries, "hasEntries");
        QTEST(description.version, "version");
        QTEST(description.url, "url");
        for (int length = 0; length < page.size(); ++length) {
            readUpdateDescription(page.left(length));
        }
    }

    /// Ten megabytes of start tags cost one pass, with and without an end.
    void hostileUpdateDescription()
    {
        const QByteArray starts = QByteArray("<update>").repeated(1300000);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(readUpdateDescription(starts).version, QString());
        QCOMPARE(readUpdateDescription(starts + "</update>").version, QString());
        QVERIFY2(timer.elapsed() < 10000, "the time grows with the square of the size");
    }

    void nextRefreshTime_data()
    {
        QTest::addColumn<int>("choice");
        QTest::addColumn<int>("storedDays");
        QTest::addColumn<int>("nextDays");
        QTest::newRow("never") << 0 << 14 << 0;
        QTest::newRow("startup, far ahead") << 1 << 14 << 1;
        QTest::newRow("day, far ahead") << 2 << 14 << 7;
        QTest::newRow("day, nearer than the interval") << 2 << 3 << 3;
        QTest::newRow("day, past") << 2 << -1 << 7;
        QTest::newRow("day, right now") << 2 << 0 << 7;
        QTest::newRow("week, past") << 3 << -400 << 30;
    }
    void nextRefreshTime()
    {
        QFETCH(int, choice);
        QFETCH(int, storedDays);
        QFETCH(int, nextDays);
        QCOMPARE(nextRefresh(choice, kNow.addDays(storedDays), kNow), kNow.addDays(nextDays));
    }

    void nextRefreshLimits()
    {
        QCOMPARE(nextRefresh(2, QDateTime(), kNow), kNow.addDays(7));
        QVERIFY(!nextRefresh(-1, kNow, kNow).has_value());
        QVERIFY(!nextRefresh(5, kNow, kNow).has_value());
        const qint64 wrapped = std::numeric_limits<qint64>::min() + kNow.toMSecsSinceEpoch() - 1;
        QCOMPARE(nextRefresh(4, kNow, kNow)->toMSecsSinceEpoch(), wrapped);
    }

    void refreshFile()
    {
        const QString path = appPath("/cfg/update");
        QDir().mkpath(appPath("/cfg"));
        for (const QDateTime &time : {kNow, kNow.toLocalTime(), *nextRefresh(4, kNow, kNow)}) {
            writeNextRefresh(time);
            QCOMPARE(readNextRefresh(), time);
        }
        const QByteArray whole = fileBytes(path);
        for (int length = 0; length < whole.size(); ++length) {
            putFile(path, whole.left(length));
            QVERIFY(!readNextRefresh().isValid());
        }
        putFile(path, QByteArray(64, '\xa5'));
        readNextRefresh();
        QFile::remove(path);
        QVERIFY(!readNextRefresh().isValid());
    }
};

QTEST_GUILESS_MAIN(ServiceTest)
#include "ServiceTest.moc"
