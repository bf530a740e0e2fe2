#include "account/Archive.h"
#include "account/Certificate.h"
#include "account/ServerLists.h"
#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

static QByteArray real(const QString &name)
{
    return fileBytes(KORVAN_SOURCE "/tests/data/account/" + name);
}

/// What an unpacked profile tells, and how it is unpacked.
class ProfileTest : public QObject
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
    }

    void l2tpList()
    {
        QStringList seen;
        for (const L2TPServer &server : parseL2TPServers("Größe-1|198.51.100.7\n\nNameOnly\n  Two|host|extra|\t\r\n"
                                                         "Empty|\r\n|no name\nLast|l")) {
            seen << server.name + '=' + server.address;
        }
        QCOMPARE(seen.join(' '), QString("Größe-1=198.51.100.7 Two=host Empty= =no name Last=l"));
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

    void sevenZip()
    {
        putScript(appPath("/compose6"), "echo \"$*\" >\"$0.arguments\"; exit 1\n");
        QVERIFY(Uncompress("/a/u.7z", "/d e/") && !Uncompress("/a/u.7Z", "/d/"));
        QCOMPARE(fileBytes(appPath("/compose6.arguments")), QByteArray("x -o/d e/ -y /a/u.7z\n"));
    }
};

QTEST_GUILESS_MAIN(ProfileTest)
#include "ProfileTest.moc"
