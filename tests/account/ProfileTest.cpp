#include "account/Archive.h"
#include "account/Certificate.h"
#include "account/ServerLists.h"
#include "common/AppPath.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTest>

static const QString kData = QStringLiteral(KORVAN_SOURCE "/tests/data/account/");

static QString argumentsPath()
{
    return appPath("/arguments");
}

class ProfileTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QDir(appPath("/cfg")).removeRecursively();
        for (const char *name : {"/compose6", "/compose7", "/arguments"}) {
            QFile::remove(appPath(name));
        }
    }

    void serverNames()
    {
        QVERIFY(openVPNServerNames().isEmpty());
        const QString longName(200, QLatin1Char('z'));
        const QStringList servers{"A", "b", "c", "Ex\"amp'l|ia", QString::fromUtf8("Größe∕2"), longName};
        for (const QString &server : servers) {
            putFile(profileFolder() + server + (server == "c" ? ".OVPN" : ".ovpn"), "");
        }
        putFile(profileFolder() + "d.ovpn.txt", "");
        putFile(profileFolder() + "anna.crt", "");
        QCOMPARE(openVPNServerNames(), servers);
    }

    void host_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("host");
        const QByteArray real = fileBytes(kData + "Examplia-1.ovpn");
        QTest::newRow("real") << real << "vpn1.korvan.example";
        QTest::newRow("line ends of DOS") << QByteArray(real).replace("\n", "\r\n") << "vpn1.korvan.example";
        QTest::newRow("the first, even in a comment") << QByteArray("#remote old 1\nremote new 2\n") << "old";
        QTest::newRow("a line end is no blank") << QByteArray("remote host\nproto udp\n") << "host\nproto";
        QTest::newRow("no remote") << QByteArray("client\ndev tun\nproto udp") << "\ndev";
        QTest::newRow("no blank") << QByteArray("remote host") << "";
        QTest::newRow("zero byte") << QByteArray("remote ho\0st 1", 14) << "";
        QTest::newRow("empty") << QByteArray("") << "";
    }
    void host()
    {
        QFETCH(QByteArray, file);
        putFile(profileFolder() + "S.ovpn", file);
        QTEST(GetHostFromOvpn("S"), "host");
        QCOMPARE(GetHostFromOvpn("missing"), QString());
    }

    void l2tpList()
    {
        const QString list = QStringLiteral("Example-1|198.51.100.7\n\nNameOnly\n  Two|host.example|extra|\t\r\n"
                                            "Empty|\r\n|no name\nLast|l");
        QStringList seen;
        for (const L2TPServer &server : parseL2TPServers(list)) {
            seen << server.name + '=' + server.address;
        }
        QCOMPARE(seen, (QStringList{"Example-1=198.51.100.7", "Two=host.example", "Empty=", "=no name", "Last=l"}));
        QVERIFY(readL2TPServers().isEmpty());
        putFile(appPath("/cfg/L2TP.txt"), QByteArray("Größe|a\n"));
        QCOMPARE(readL2TPServers().value(0).name, QString::fromUtf8("Größe"));
    }

    void skippedServers()
    {
        QVERIFY(!readSkipList().contains("A"));
        putFile(profileFolder() + "skiplist.dat", "A|Größe|c d");
        QCOMPARE(readSkipList(), (QStringList{"A", QString::fromUtf8("Größe"), "c d"}));
    }

    void certificateDate_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("date");
        const QByteArray real = fileBytes(kData + "anna.crt");
        QTest::newRow("real") << real << "Jan  5 09:08:07 2027";
        QTest::newRow("line ends of DOS") << QByteArray(real).replace("\n", "\r\n") << "Jan  5 09:08:07 2027";
        QTest::newRow("marker missing") << QByteArray("Not After:  Jan  5 09:08:07 2027 GMT")
                                        << "Jan  5 09:08:07 2027";
        QTest::newRow("other letter case") << QByteArray("not after : in 2027 GMT") << "in 2027";
        QTest::newRow("end missing") << QByteArray("Not After : Jan  5 09:08:07 2027") << "";
        QTest::newRow("end before the start") << QByteArray("GMT Not After : Jan  5") << "";
        QTest::newRow("empty") << QByteArray() << "";
    }
    void certificateDate()
    {
        QFETCH(QByteArray, file);
        putFile(certificatePath("anna"), file);
        QTEST(GetCertExpiredDateTime(certificatePath("anna")), "date");
    }

    /// The date is UTC wherever the machine stands, also at an hour that its own clocks skip.
    void expiry()
    {
        qputenv("TZ", "Europe/Berlin");
        tzset();
        const QDateTime gap(QDate(2026, 3, 29), QTime(2, 30), Qt::UTC);
        QVERIFY(!isExpired("Mar 29 02:30:00 2026", gap));
        QVERIFY(!isExpired("Mar 29 02:30:01 2026", gap));
        QVERIFY(isExpired("Mar 29 02:29:59 2026", gap));
        QVERIFY(!isExpired("Jan  5 09:08:07 2027", gap));
        QVERIFY(isExpired("", gap));
        QVERIFY(isExpired("Nonsense 31 09:08:07 2999", gap));
        QVERIFY(GetCertExpiredDateTime(profileFolder()).isEmpty());
        qunsetenv("TZ");
        tzset();
    }

    /// The tools' command lines, and that a tool which fails is waited for and told from one that is not there.
    void archiveTools()
    {
        const QByteArray record = "printf '%s\\n' \"$0\" \"$@\" >\"$(dirname \"$0\")/arguments\"; exit 1\n";
        const auto arguments = [] {
            const QStringList lines = QString::fromUtf8(fileBytes(argumentsPath())).split('\n');
            QFile::remove(argumentsPath());
            return lines.mid(0, lines.size() - 1);
        };
        QVERIFY(!UncompressFile("/a/config"));
        QVERIFY(!Uncompress("/a/u.zip", "/d/"));
        QVERIFY(!Uncompress("/a/u.7z", "/d/"));
        putScript(appPath("/compose6"), record);
        putScript(appPath("/compose7"), record);

        QVERIFY(UncompressFile("/a b/config"));
        QCOMPARE(arguments(), (QStringList{appPath("/compose7"), "-o", "/a b/config", "-d", profileFolder()}));
        QVERIFY(Uncompress("/a/u.zip", "/d/"));
        QCOMPARE(arguments(), (QStringList{appPath("/compose7"), "-o", "/a/u.zip", "-d", "/d/"}));
        QVERIFY(Uncompress("/a/u.7z", "/d e/"));
        QCOMPARE(arguments(), (QStringList{appPath("/compose6"), "x", "-o/d e/", "-y", "/a/u.7z"}));
        UncompressEx("/a/x", "/d/", "a zip file");
        QCOMPARE(arguments().value(0), appPath("/compose7"));
        UncompressEx("/a/x", "/d/", "7z");
        QCOMPARE(arguments().value(0), appPath("/compose6"));

        QVERIFY(!Uncompress("/a/u.ZIP", "/d/"));
        QVERIFY(!Uncompress("/a/u", "/d/"));
        QVERIFY(arguments().isEmpty());
        putFile(appPath("/compose7"), "not executable");
        QVERIFY(UncompressFile("/a/config"));
    }
};

QTEST_GUILESS_MAIN(ProfileTest)
#include "ProfileTest.moc"
