#include "account/L2tpPassword.h"
#include "account/Proxy.h"
#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "common/StateFile.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTest>

#include <clocale>

static void compareMode(const QString &path)
{
    QCOMPARE(QFile::permissions(path) & ~QFile::Permissions(QFile::ReadUser | QFile::WriteUser),
             QFile::ReadOwner | QFile::WriteOwner);
}

class SecretsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { std::setlocale(LC_ALL, "C.UTF-8"); }
    void init()
    {
        QDir(appPath("/cfg")).removeRecursively();
        QDir().mkpath(appPath("/cfg"));
    }

    void scrambling_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << "";
        QTest::newRow("marks") << "a&b=c+d e%f";
        QTest::newRow("accents") << QString::fromUtf8("Größe é 名");
        QTest::newRow("longer than the key") << QString(17, 'T');
        QTest::newRow("longest") << QString(255, 'x');
    }
    void scrambling()
    {
        QFETCH(QString, text);
        const QString scrambled = encode(text);
        QCOMPARE(scrambled.size(), 2 * text.toLocal8Bit().size());
        QVERIFY(text.isEmpty() || !scrambled.contains(text));
        QCOMPARE(decode(scrambled), text);
    }

    void scramblingLimits()
    {
        QCOMPARE(encode(QString(256, 'x')), QString());
        QCOMPARE(encode(QString(128, QChar(0xe9))), QString());
        QCOMPARE(decode("@(]"), QString());
        QCOMPARE(decode(QString(512, '@')), QString());
        QCOMPARE(decode(QString(100000, '@')), QString());
    }

    void savedLogin()
    {
        writeSavedLogin({"anna", QString::fromUtf8("a&b=c+d é")});
        compareMode(savedLoginPath());
        const QByteArray whole = fileBytes(savedLoginPath());
        QCOMPARE(whole.size(), 4 + 2 * 8 + 4 + 2 * 20);
        QCOMPARE(whole.left(4).toHex(), QByteArray("00000010"));
        QVERIFY(!whole.contains("anna"));
        QCOMPARE(readSavedLogin().password, QString::fromUtf8("a&b=c+d é"));

        writeSavedLogin({"bert", QString(256, 'x')});
        QCOMPARE(readSavedLogin().user, QString("anna"));
        writeSavedLogin({"bert", ""});
        QCOMPARE(readSavedLogin().user, QString("bert"));
        QCOMPARE(readSavedLogin().password, QString());
    }

    void damagedLogin()
    {
        writeSavedLogin({"anna", "secret"});
        const QByteArray whole = fileBytes(savedLoginPath());
        for (int length = 0; length < whole.size(); ++length) {
            putFile(savedLoginPath(), whole.left(length));
            QCOMPARE(readSavedLogin().user, length < 20 ? QString() : QString("anna"));
            QCOMPARE(readSavedLogin().password, QString());
        }
        QRandomGenerator random(1);
        for (int round = 0; round < 300; ++round) {
            QByteArray noise(static_cast<int>(random.bounded(200)), '\0');
            std::generate(noise.begin(), noise.end(), [&] { return static_cast<char>(random.bounded(256)); });
            putFile(savedLoginPath(), noise);
            readSavedLogin();
        }
        QFile::remove(savedLoginPath());
        QCOMPARE(readSavedLogin().user, QString());
        QDir().mkpath(savedLoginPath());
        QCOMPARE(readSavedLogin().user, QString());
        writeSavedLogin({"anna", "secret"});
        QVERIFY(QFileInfo(savedLoginPath()).isDir());
    }

    void l2tpPassword()
    {
        const QString path = appPath("/l2tp");
        saveL2TPPassword(QString::fromUtf8("pässword?>"));
        QCOMPARE(fileBytes(path), QByteArray("cMOkc3N3b3JkPz4="));
        compareMode(path);
        QCOMPARE(loadL2TPPassword(), QString::fromUtf8("pässword?>"));
        QFile::remove(path);
        QCOMPARE(loadL2TPPassword(), QString());
    }

    void proxyCredentials()
    {
        const QString path = writeProxyCredentials(QString::fromUtf8("jörg"), "p w");
        QCOMPARE(path, appPath("/cfg/proxy"));
        QCOMPARE(fileBytes(path), QByteArray("jörg\r\np w\r\n"));
        compareMode(path);
        writeProxyCredentials("", "");
        QCOMPARE(fileBytes(path), QByteArray("\r\n\r\n"));
    }

    void applicationProxy()
    {
        const QNetworkProxy http = networkProxy(ProxyKind::Http, "proxy.example", "8080", "u", "p");
        QCOMPARE(http.type(), QNetworkProxy::HttpProxy);
        QCOMPARE(http.hostName(), QString("proxy.example"));
        QCOMPARE(http.port(), quint16(8080));
        QCOMPARE(http.user() + http.password(), QString("up"));
        QVERIFY(!http.isCachingProxy() && http.isTransparentProxy());
        const QNetworkProxy socks = networkProxy(ProxyKind::Socks, "s", "65536", "u", "p");
        QCOMPARE(socks.type(), QNetworkProxy::Socks5Proxy);
        QCOMPARE(socks.port(), quint16(0));
        QCOMPARE(socks.user() + socks.password(), QString());
        QCOMPARE(http.capabilities(), socks.capabilities());
        QCOMPARE(networkProxy(ProxyKind::Http, "s", "8080x", "", "").port(), quint16(0));
        QCOMPARE(networkProxy(ProxyKind::None, "s", "1", "", "").type(), QNetworkProxy::NoProxy);
    }
};

QTEST_GUILESS_MAIN(SecretsTest)
#include "SecretsTest.moc"
