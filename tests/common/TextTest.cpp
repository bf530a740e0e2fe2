#include "common/Text.h"
#include "common/Dates.h"
#include "common/Digest.h"
#include "common/Paths.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class TextTest : public QObject
{
    Q_OBJECT

private slots:
    void versions_data();
    void versions();
    void between_data();
    void between();
    void paths_data();
    void paths();
    void clearPathKeepsCustomAndFolders();
    void removeFolderIsRecursive();
    void sizes_data();
    void sizes();
    void everyByteIsEscaped();
    void dates_data();
    void dates();
    void textEndsAtNul();
    void digest();
    void scramblerReverses();
    void scramblerRefusesAndLeavesBuffers();
};

void TextTest::versions_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("current");
    QTest::addColumn<int>("result");
    QTest::newRow("numbers, not text") << "1.10"
                                       << "1.9" << 1;
    QTest::newRow("plain difference") << "1.5"
                                      << "1.2" << 3;
    QTest::newRow("older") << "1.2"
                           << "1.5" << -3;
    QTest::newRow("trailing letter") << "2.0a"
                                     << "2.0" << 0;
    QTest::newRow("only one letter goes") << "1.2.3rc"
                                          << "1.2.0" << 0;
    QTest::newRow("letter outside ASCII") << QString::fromUtf8("1.3é") << "1.2" << 1;
    QTest::newRow("shorter server") << "1.2"
                                    << "1.2.1" << 0;
    QTest::newRow("shorter current") << "1.2.1"
                                     << "1.2" << 1;
    QTest::newRow("empty part is zero") << "1..2"
                                        << "1.0.1" << 1;
    QTest::newRow("empty current") << "9.9"
                                   << "" << 0;
    QTest::newRow("empty server") << ""
                                  << "1.0" << -1;
    QTest::newRow("trailing line end is no number") << "2.4.2"
                                                    << "2.4.1\n"
                                                    << 1;
}

void TextTest::versions()
{
    QFETCH(QString, server);
    QFETCH(QString, current);
    QTEST(VersionCompare(server, current), "result");
}

void TextTest::between_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("open");
    QTest::addColumn<QString>("close");
    QTest::addColumn<QString>("result");
    QTest::newRow("plain") << "key=abc;"
                           << "key="
                           << ";"
                           << "abc";
    QTest::newRow("close before open is skipped") << ";key=abc;"
                                                  << "key="
                                                  << ";"
                                                  << "abc";
    QTest::newRow("missing open starts at length - 1") << "a;c;"
                                                       << "zz"
                                                       << ";"
                                                       << "";
    QTest::newRow("missing open, longer") << "ab;c"
                                          << "zz"
                                          << ";"
                                          << "b";
    QTest::newRow("missing close") << "key=abc"
                                   << "key="
                                   << ";" << QString();
    QTest::newRow("empty source") << ""
                                  << "a"
                                  << "b" << QString();
}

void TextTest::between()
{
    QFETCH(QString, source);
    QFETCH(QString, open);
    QFETCH(QString, close);
    QFETCH(QString, result);
    const QString found = GetStringBetween(source, open, close);
    QCOMPARE(found, result);
    QCOMPARE(found.isNull(), result.isNull());
}

void TextTest::paths_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("result");
    QTest::newRow("one step") << "a/b/../c"
                              << "a/c";
    QTest::newRow("two steps") << "/x/y/../../z"
                               << "/z";
    QTest::newRow("backslashes") << "a\\b\\..\\c"
                                 << "a/c";
    QTest::newRow("step at the end") << "/Applications/X.app/Contents/MacOS/.."
                                     << "/Applications/X.app/Contents";
    QTest::newRow("hidden name counts as a step") << "/a/b/..hidden"
                                                  << "/ahidden";
    QTest::newRow("nothing to collapse throws away the steps") << "a/b/../../../c"
                                                               << "a/b/../../../c";
    QTest::newRow("begins with a step") << "/../b"
                                        << "/../b";
    QTest::newRow("only a step") << "/.."
                                 << "/..";
    QTest::newRow("no step") << "/a/b"
                             << "/a/b";
}

void TextTest::paths()
{
    QFETCH(QString, path);
    QTEST(QDir_clearPath(path), "result");
}

void TextTest::clearPathKeepsCustomAndFolders()
{
    QTemporaryDir folder;
    const QString base = folder.path() + "/";
    for (const char *name : {"a.ovpn", "My-CuStOm.ovpn", ".hidden"}) {
        putFile(base + name, "x");
    }
    QVERIFY(ClearPath(base));
    QCOMPARE(QDir(base).entryList(QDir::Files | QDir::Hidden), QStringList({".hidden", "My-CuStOm.ovpn"}));

    putFile(base + "b.ovpn", "x");
    QDir(base).mkdir("a-folder");
    QVERIFY2(!ClearPath(base), "a folder can not be removed this way");
    QVERIFY2(!QFile::exists(base + "b.ovpn"), "later entries are still tried");
    QVERIFY2(ClearPath(base + "missing/"), "nothing to remove is no failure");
}

void TextTest::removeFolderIsRecursive()
{
    QTemporaryDir folder;
    putFile(folder.path() + "/a b/c/d", "x");
    QVERIFY(QDir_removeFolder(folder.path() + "/x/../a b"));
    QVERIFY(!QDir(folder.path() + "/a b").exists());
    QVERIFY(QDir_removeFolder(folder.path() + "/missing"));
}

void TextTest::sizes_data()
{
    QTest::addColumn<quint64>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << quint64(0) << "0B";
    QTest::newRow("last byte") << quint64(1023) << "1023B";
    QTest::newRow("first KB") << quint64(1024) << "1KB";
    QTest::newRow("rounded down") << quint64(2047) << "1KB";
    QTest::newRow("last KB") << quint64(1048575) << "1023KB";
    QTest::newRow("first MB") << quint64(1048576) << "1MB";
    QTest::newRow("no larger unit") << quint64(5000) * 1048576 << "5000MB";
    QTest::newRow("largest") << ~quint64(0) << "17592186044415MB";
}

void TextTest::sizes()
{
    QFETCH(quint64, bytes);
    QTEST(FormatDataSize(bytes), "text");
}

void TextTest::everyByteIsEscaped()
{
    QCOMPARE(UrlFormatString("Ab1"), QString("%41%62%31"));
    QCOMPARE(UrlFormatString(QString::fromUtf8("é ")), QString("%C3%A9%20"));
    QCOMPARE(UrlFormatString(""), QString());
}

void TextTest::dates_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDateTime>("date");
    QTest::newRow("two blanks") << "Oct  9 12:00:00 2026" << QDateTime({2026, 10, 9}, {12, 0}, Qt::UTC);
    QTest::newRow("one blank") << "Dec 31 23:59:59 2017" << QDateTime({2017, 12, 31}, {23, 59, 59}, Qt::UTC);
    QTest::newRow("single pass over blanks") << "Oct    9 12:00:00 2026" << QDateTime();
    QTest::newRow("time zone left in") << "Oct  9 12:00:00 2026 GMT" << QDateTime();
    QTest::newRow("no such day") << "Feb 30 12:00:00 2026" << QDateTime();
    QTest::newRow("empty") << "" << QDateTime();
}

void TextTest::dates()
{
    QFETCH(QString, text);
    QTEST(GetDateTimeFromString(text), "date");
}

void TextTest::textEndsAtNul()
{
    QCOMPARE(latin1UpToNul(QByteArray("ab\0cd", 5)), QString("ab"));
    QCOMPARE(latin1UpToNul(QByteArray("\xE9")), QString(QChar(0xE9)));
    QCOMPARE(latin1UpToNul(QByteArray()), QString());
}

void TextTest::digest()
{
    QCOMPARE(md5(""), QString("d41d8cd98f00b204e9800998ecf8427e"));
    QCOMPARE(md5("abc"), QString("900150983cd24fb0d6963f7d28e17f72"));
}

void TextTest::scramblerReverses()
{
    QByteArray all;
    for (int byte = 1; byte < 256; ++byte) {
        all.append(static_cast<char>(byte));
    }
    QByteArray scrambled(2 * all.size() + 1, 'X');
    QCOMPARE(simple_encode(all.constData(), scrambled.data()), 2 * all.size());
    QCOMPARE(scrambled.back(), '\0');
    scrambled.chop(1);
    for (const char character : qAsConst(scrambled)) {
        QVERIFY(character >= 0x20 && character <= 0x7E);
    }
    QByteArray plain(all.size(), 'X');
    QCOMPARE(simple_decode(scrambled.constData(), plain.data()), all.size() % 16);
    QCOMPARE(plain, all);
}

void TextTest::scramblerRefusesAndLeavesBuffers()
{
    char buffer[4] = "XYZ";
    QCOMPARE(simple_encode("", buffer), 0);
    QCOMPARE(buffer[0], '\0');
    QCOMPARE(simple_decode("", buffer), 0);
    QCOMPARE(simple_decode("abc", buffer), -4);
    QCOMPARE(buffer[1], 'Y');
    QCOMPARE(simple_decode("\x7F\x7F", buffer), 1);
    QCOMPARE(buffer[0], ENCODE_KEY[0]); // a pair that is no code decodes to the key itself

    ENCODE_KEY[3] = '\0';
    QCOMPARE(simple_encode("a", buffer), -2);
    QCOMPARE(simple_decode("abc", buffer), -3);
    ENCODE_KEY[3] = 'r';
}

QTEST_GUILESS_MAIN(TextTest)
#include "TextTest.moc"
