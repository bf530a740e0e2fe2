#include "account/L2tpPassword.h"
#include "account/Proxy.h"
#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "common/Digest.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QRegularExpression>

#include <clocale>

static bool isPrivate(const QString &path)
{
    return (QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOwner)) == 0;
}

class SecretsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        std::setlocale(LC_ALL, "C.UTF-8");
        QDir().mkpath(appPath("/cfg"));
    }

    void scrambling()
    {
        QStringList texts{"", "a&b=c+d e%f", "Größe é 名", QString(255, 'x')};
        for (ushort code = 1; code < 0x800; ++code) { // all bytes of UTF-8 but those of rarer letters
            texts << QString(5, QChar(code));
        }
        for (const QString &text : qAsConst(texts)) {
            const QString scrambled = encode(text);
            QCOMPARE(scrambled.size(), 2 * text.toLocal8Bit().size());
            QVERIFY(!scrambled.contains(QRegularExpression("[^ -~]")));
            QCOMPARE(decode(scrambled), text);
        }
        QCOMPARE(encode(QString(256, 'x')) + encode(QString(128, QChar(0xe9))), QString());
        QCOMPARE(decode("@(]") + decode(QString(512, '@')), QString()); // damaged
        QCOMPARE(decode("\x7F\x7F"), QString(QChar(ENCODE_KEY[0])));    // a pair that is no code gives the key itself
    }

    void savedLogin()
    {
        writeSavedLogin({"anna", "a&b=c+d é"});
        QVERIFY(isPrivate(savedLoginPath()));
        const QByteArray whole = fileBytes(savedLoginPath());
        writeSavedLogin({"bert", QString(256, 'x')}); // can not be kept
        QCOMPARE(fileBytes(savedLoginPath()), whole);
        QVERIFY(whole.startsWith(QByteArray::fromHex("00000010")) && whole.size() == 4 + 2 * 8 + 4 + 2 * 20);
        QCOMPARE(readSavedLogin().password, QString("a&b=c+d é"));
        for (int length = 0; length < whole.size(); ++length) {
            putFile(savedLoginPath(), whole.left(length));
            QCOMPARE(readSavedLogin().user, length < 20 ? QString() : QString("anna"));
            QCOMPARE(readSavedLogin().password, QString());
        }
    }

    void filesOfOtherPasswords()
    {
        saveL2TPPassword("pässword?>");
        QCOMPARE(fileBytes(appPath("/l2tp")), QByteArray("cMOkc3N3b3JkPz4="));
        QCOMPARE(loadL2TPPassword(), QString("pässword?>"));
        ProxySettings proxy;
        proxy.http = proxy.socks = true; // which no click brings about
        proxy.user = "jörg";
        proxy.password = "p w";
        QVERIFY(isPrivate(appPath("/l2tp")) && isPrivate(writeProxyCredentials(proxy)));
        QCOMPARE(fileBytes(appPath("/cfg/proxy")), QByteArray("jörg\r\np w\r\n"));
        QVERIFY(openVPNProxy(proxy, "/c") == "|--socks-proxy||" && networkProxy(proxy).user() == "jörg");
    }
};

QTEST_GUILESS_MAIN(SecretsTest)
#include "SecretsTest.moc"
