#include "account/Certificate.h"
#include "account/Limits.h"
#include "account/PublicIp.h"
#include "account/ServerLists.h"
#include "account/UpdateReason.h"
#include "account/Updates.h"
#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

#include <QTranslator>

static QByteArray real(const QString &name)
{
    return fileBytes(KORVAN_SOURCE "/tests/data/account/" + name);
}

/// What the service's pages and the files of its profiles mean.
class ServiceTest : public QObject
{
    Q_OBJECT

private slots:
    void host()
    {
        const std::pair<QByteArray, const char *> cases[] = {
            {real("Examplia-1.ovpn").replace("\n", "\r\n"), "vpn1.korvan.example"},
            {"#remote old 1\nremote new 2\n", "old"},    // the first, even in a comment
            {"remote host\nproto udp\n", "host\nproto"}, // a line end is no blank
            {"client\ndev tun\nproto udp", "\ndev"},     // no remote
            {"remote host", ""},                         // no blank
        };
        for (const auto &[file, expected] : cases) {
            putFile(profileFolder() + "S.ovpn", file);
            COMPARE_CASE(file, GetHostFromOvpn("S"), expected);
        }
        putFile(profileFolder() + "Upper.OVPN", "remote high 1\n");
        QCOMPARE(openVPNServerFile("Upper") + GetHostFromOvpn("Upper"), QString("Upper.OVPNhigh"));
    }

    void certificateDate()
    {
        const std::pair<QByteArray, const char *> cases[] = {
            {real("anna.crt").replace("\n", "\r\n"), "Jan  5 09:08:07 2027"},
            {"Not After:  Jan  5 09:08:07 2027 GMT",
             "Jan  5 09:08:07 2027"}, // no marker: it starts at its length - 1
            {"Not After : Jan  5 09:08:07 2027", ""},
            {"GMT Not After : Jan  5", ""},
        };
        for (const auto &[file, date] : cases) {
            putFile(certificatePath("anna"), file);
            COMPARE_CASE(file, GetCertExpiredDateTime(certificatePath("anna")), date);
        }
    }

    /// The date is UTC wherever the machine stands, also at an hour that its own clocks skip.
    void expiry()
    {
        qputenv("TZ", "Europe/Berlin");
        tzset();
        const QDateTime gap(QDate(2026, 3, 29), QTime(2, 30), Qt::UTC);
        for (const char *date : {"Mar 29 02:30:00 2026", "Jan  5 09:08:07 2027"}) {
            QVERIFY2(!isExpired(date, gap), date);
        }
        for (const char *date : {"Mar 29 02:29:59 2026", "Nonsense 31 09:08:07 2999", "Feb 30 12:00:00 2027", ""}) {
            QVERIFY2(isExpired(date, gap), date);
        }
    }

    void ipPage()
    {
        const std::pair<QByteArray, const char *> cases[] = {
            {"<h1>You are in Examplia? Your IP: 203.0.113.5</h1>\r\n", "Examplia|203.0.113.5"},
            {"You? IP: 1</h1>", "u|1"},              // no "in"
            {"in A. IP: 1</h1>", "A. IP: 1</h1>|1"}, // no question mark
            {"in A? IP 1</h1>", "A|n A? IP 1"},      // no colon
            {"in A? IP: 1", "A|1"},                  // no end
            {"", "|"},
        };
        for (const auto &[page, expected] : cases) {
            const PublicIp ip = cutIpPage(page);
            COMPARE_CASE(page, ip.country + '|' + ip.address, expected);
        }
    }

    void longTextsAndLists()
    {
        QCOMPARE(shownText(QString(4096, 'x')).size(), 4096);
        QCOMPARE(shownText(QString(200000, 'x')), QString(4096, 'x') + "...");
        QCOMPARE(shownText(QString("x\n").repeated(1000)).count('\n'), 23); // a box fits on the screen
        const QByteArray message = "<update><system>macos</system><message>" + QByteArray(200000, 'x') + "</message>";
        QCOMPARE(readUpdateDescription(message + "</update>").message.size(), 4099);
        putFile(l2tpListPath(), QByteArray("N|192.0.2.1|more\n").repeated(100001));
        QCOMPARE(readL2TPServers().size(), 100000);
        QCOMPARE(readL2TPServers().constLast().address, QString("192.0.2.1"));
        putFile(profileFolder() + "S.ovpn", QByteArray(2 << 20, '\n') + "remote far 1 ");
        QVERIFY(!GetHostFromOvpn("S").startsWith("far"));
    }

    /// Also the updater's, with versions in them, in the order of the other language.
    void reasonsInThePersonsLanguage()
    {
        struct Backwards : QTranslator
        {
            bool isEmpty() const override { return false; }
            QString translate(const char *, const char *text, const char *, int) const override
            {
                return QString(text).contains("%2") ? "%2 < %1" : QString(text).toUpper();
            }
        } language;
        QCoreApplication::installTranslator(&language);
        const std::pair<const char *, const char *> cases[] = {
            {"it is not signed", "IT IS NOT SIGNED"},
            {"the answer has the status 302", "THE ANSWER HAS THE STATUS 302"},
            {"its version 1.0 is older than the installed 2.4.1", "2.4.1 < 1.0"},
            {"/x: Permission denied", "/x: Permission denied"}, // the system's
        };
        for (const auto &[reason, expected] : cases) {
            COMPARE_CASE(reason, translatedReason(reason), expected);
        }
        QCoreApplication::removeTranslator(&language);
    }

    void updateDescription()
    {
        const QByteArray mac = "<update><system>macos</system>";
        const QByteArray starts = QByteArray("<update>").repeated(1300000); // cost one pass
        const std::tuple<const char *, QByteArray, const char *> cases[] = {
            {"ten megabytes of start tags", starts + "</update>", "1|||"},
            {"the first of two entries for this system", real("update.xml").replace("\n", "\r\n"),
             "1|2.5.0|https://portal.korvan.example/korvan-2.5.0.zip|Version 2.5.0 mends the tray menu."},
            {"end tag missing", mac + "<version>2</version>", "1|||"},
            {"runs into the next entry", "<update><version>1</version>" + mac + "<url>u</url></update>", "1|1|u|"},
            {"no version, then one", mac + "</update>" + mac + "<version>2</version></update>", "1|||"},
        };
        for (const auto &[name, page, expected] : cases) {
            const UpdateDescription update = readUpdateDescription(page);
            const QString number = QString::number(update.hasEntries);
            COMPARE_CASE(name, QStringList({number, update.version, update.url, update.message}).join('|'), expected);
        }
    }
};

QTEST_GUILESS_MAIN(ServiceTest)
#include "ServiceTest.moc"
