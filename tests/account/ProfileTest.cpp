#include "account/Archive.h"
#include "account/Certificate.h"
#include "account/ServerLists.h"
#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

#include <QDir>

static QByteArray real(const QString &name)
{
    return fileBytes(KORVAN_SOURCE "/tests/data/account/" + name);
}

/// What an unpacked profile tells, and how it is unpacked.
class ProfileTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { QDir(appPath("/cfg")).removeRecursively(); }

    void serverNames()
    {
        QVERIFY(openVPNServerNames().isEmpty());
        const QStringList servers{"A", "b", "c", "Ex\"amp'l|ia", "Größe∕2", QString(200, 'z')};
        for (const QString &server : servers) {
            putFile(profileFolder() + server + (server == "c" ? ".OVPN" : ".ovpn"), "");
        }
        putFile(profileFolder() + "d.ovpn.txt", "");
        QCOMPARE(openVPNServerNames(), servers);
    }

    void host()
    {
        const std::pair<QByteArray, const char *> cases[] = {
            {real("Examplia-1.ovpn"), "vpn1.korvan.example"},
            {real("Examplia-1.ovpn").replace("\n", "\r\n"), "vpn1.korvan.example"},
            {"#remote old 1\nremote new 2\n", "old"},    // the first, even in a comment
            {"remote host\nproto udp\n", "host\nproto"}, // a line end is no blank
            {"client\ndev tun\nproto udp", "\ndev"},     // no remote
            {"remote host", ""},                         // no blank
            {QByteArray("remote ho\0st 1", 14), ""},
        };
        for (const auto &[file, expected] : cases) {
            putFile(profileFolder() + "S.ovpn", file);
            COMPARE_CASE(file, GetHostFromOvpn("S"), expected);
        }
        QCOMPARE(GetHostFromOvpn("missing"), QString());
    }

    void l2tpList()
    {
        QVERIFY(readL2TPServers().isEmpty());
        putFile(l2tpListPath(), "Größe-1|198.51.100.7\n\nNameOnly\n  Two|host.example|extra|\t\r\n"
                                "Empty|\r\n|no name\nLast|l");
        QStringList seen;
        for (const L2TPServer &server : readL2TPServers()) {
            seen << server.name + '=' + server.address;
        }
        QCOMPARE(seen.join(' '), QString("Größe-1=198.51.100.7 Two=host.example Empty= =no name Last=l"));
    }

    void certificateDate()
    {
        const std::pair<QByteArray, const char *> cases[] = {
            {real("anna.crt"), "Jan  5 09:08:07 2027"},
            {real("anna.crt").replace("\n", "\r\n"), "Jan  5 09:08:07 2027"},
            {"Not After:  Jan  5 09:08:07 2027 GMT",
             "Jan  5 09:08:07 2027"}, // no marker: it starts at its length - 1
            {"not after : in 2027 GMT", "in 2027"},
            {"Not After : Jan  5 09:08:07 2027", ""},
            {"GMT Not After : Jan  5", ""},
            {"", ""},
        };
        for (const auto &[file, date] : cases) {
            putFile(certificatePath("anna"), file);
            COMPARE_CASE(file, GetCertExpiredDateTime(certificatePath("anna")), date);
        }
        QCOMPARE(GetCertExpiredDateTime(profileFolder()), QString());
    }

    /// The date is UTC wherever the machine stands, also at an hour that its own clocks skip.
    void expiry()
    {
        qputenv("TZ", "Europe/Berlin");
        tzset();
        const QDateTime gap(QDate(2026, 3, 29), QTime(2, 30), Qt::UTC);
        for (const char *date : {"Mar 29 02:30:00 2026", "Apr  1 00:00:00 2026", "Jan  5 09:08:07 2027"}) {
            QVERIFY2(!isExpired(date, gap), date);
        }
        for (const char *date : {"Mar 29 02:29:59 2026", "Nonsense 31 09:08:07 2999", "Feb 30 12:00:00 2027",
                                 "Oct    9 12:00:00 2027", "Oct  9 12:00:00 2027 GMT", ""}) {
            QVERIFY2(isExpired(date, gap), date);
        }
    }

    /// The tools' command lines, and that one which fails is waited for and told from one that is not there.
    void archiveTools()
    {
        QFile::remove(appPath("/arguments"));
        QFile::remove(appPath("/compose6"));
        QFile::remove(appPath("/compose7"));
        QVERIFY(!UncompressFile("/a/config") && !Uncompress("/a/u.zip", "/d/") && !Uncompress("/a/u.7z", "/d/"));
        for (const char *tool : {"/compose6", "/compose7"}) {
            putScript(appPath(tool), "IFS='|'; echo \"${0##*/}|$*\" >>\"${0%/*}/arguments\"; exit 1\n");
        }
        QVERIFY(UncompressFile("/a b/config") && Uncompress("/a/u.zip", "/d/") && Uncompress("/a/u.7z", "/d e/"));
        QVERIFY(!Uncompress("/a/u.ZIP", "/d/") && !Uncompress("/a/u", "/d/"));
        UncompressEx("/a/x", "/d/", "a zip file");
        QCOMPARE(fileBytes(appPath("/arguments")), "compose7|-o|/a b/config|-d|" + profileFolder().toUtf8() +
                                                       "\ncompose7|-o|/a/u.zip|-d|/d/\n"
                                                       "compose6|x|-o/d e/|-y|/a/u.7z\ncompose7|-o|/a/x|-d|/d/\n");
        putFile(appPath("/compose7"), "not executable");
        QVERIFY(UncompressFile("/a/config"));
    }
};

QTEST_GUILESS_MAIN(ProfileTest)
#include "ProfileTest.moc"
