#include "common/Dates.h"
#include "common/Digest.h"
#include "common/Paths.h"
#include "common/StateFile.h"
#include "common/Text.h"
#include "common/Wait.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

class CommonTest : public QObject
{
    Q_OBJECT

private slots:
    void versions();
    void between();
    void paths();
    void foldersAreEmptied();
    void sizes();
    void dates();
    void bytesAndTexts();
    void scramblerReverses();
    void scramblerRefusesAndLeavesBuffers();
    void stateIsReplacedWholeAndPrivate();
    void stateRefusesLinksAndFolders();
    void waitEndsOnSignalOrLimit();
};

void CommonTest::versions()
{
    const std::tuple<const char *, const char *, int> cases[] = {
        {"1.10", "1.9", 1},                                                    // numbers, not text
        {"1.2", "1.5", -3},  {"2.0a", "2.0", 0},      {"1.2.3rc", "1.2.0", 0}, // only one letter goes
        {"1.3é", "1.2", 1},  {"1.2", "1.2.1", 0}, // the shorter one decides how many parts are compared
        {"1.2.1", "1.2", 1}, {"1..2", "1.0.1", 1},    {"9.9", "", 0},
        {"", "1.0", -1},     {"2.4.2", "2.4.1\n", 1}, // "1\n" is no number
    };
    for (const auto &[server, current, result] : cases) {
        COMPARE_CASE(server, VersionCompare(server, current), result);
    }
}

void CommonTest::between()
{
    const std::tuple<const char *, const char *, const char *> cases[] = {
        {"key=abc;", "key=", "abc"}, {";key=abc;", "key=", "abc"},
        {"a;c;", "zz", ""}, // without the opening text it starts at that text's length - 1
        {"ab;c", "zz", "b"},         {"key=abc", "key=", nullptr},
        {"", "a", nullptr},
    };
    for (const auto &[source, open, result] : cases) {
        const QString found = GetStringBetween(source, open, ";");
        COMPARE_CASE(source, found, result);
        COMPARE_CASE(source, found.isNull(), result == nullptr);
    }
}

void CommonTest::paths()
{
    const std::pair<const char *, const char *> cases[] = {
        {"a/b/../c", "a/c"},
        {"/x/y/../../z", "/z"},
        {"a\\b\\..\\c", "a/c"},
        {"/X.app/Contents/MacOS/..", "/X.app/Contents"},
        {"/a/b/..hidden", "/ahidden"},        // a hidden name counts as a step
        {"a/b/../../../c", "a/b/../../../c"}, // a step too many: the text as it was
        {"/../b", "/../b"},
    };
    for (const auto &[path, result] : cases) {
        COMPARE_CASE(path, QDir_clearPath(path), result);
    }
}

void CommonTest::foldersAreEmptied()
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

    putFile(base + "a b/c/d", "x");
    QVERIFY(QDir_removeFolder(base + "x/../a b"));
    QVERIFY(!QDir(base + "a b").exists());
    QVERIFY(QDir_removeFolder(base + "missing"));
}

void CommonTest::sizes()
{
    const std::pair<quint64, const char *> cases[] = {
        {0, "0B"},
        {1023, "1023B"},
        {1024, "1KB"},
        {2047, "1KB"},
        {1048575, "1023KB"},
        {1048576, "1MB"},
        {~quint64(0), "17592186044415MB"},
    };
    for (const auto &[bytes, text] : cases) {
        COMPARE_CASE(text, FormatDataSize(bytes), text);
    }
}

void CommonTest::dates()
{
    QCOMPARE(GetDateTimeFromString("Oct  9 12:00:00 2026"), QDateTime({2026, 10, 9}, {12, 0}, Qt::UTC));
    QCOMPARE(GetDateTimeFromString("Dec 31 23:59:59 2017"), QDateTime({2017, 12, 31}, {23, 59, 59}, Qt::UTC));
    for (const char *text : {"Oct    9 12:00:00 2026", "Oct  9 12:00:00 2026 GMT", "Feb 30 12:00:00 2026", ""}) {
        QVERIFY2(!GetDateTimeFromString(text).isValid(), text);
    }
}

void CommonTest::bytesAndTexts()
{
    QCOMPARE(UrlFormatString("Ab é"), QString("%41%62%20%C3%A9")); // every byte is escaped
    QCOMPARE(latin1UpToNul(QByteArray("\xE9\0cd", 4)), QString(QChar(0xE9)));
    QCOMPARE(md5("abc"), QString("900150983cd24fb0d6963f7d28e17f72"));
}

void CommonTest::scramblerReverses()
{
    QByteArray all;
    for (int byte = 1; byte < 256; ++byte) {
        all.append(static_cast<char>(byte));
    }
    QByteArray scrambled(2 * all.size() + 1, 'X');
    QCOMPARE(simple_encode(all.constData(), scrambled.data()), 2 * all.size());
    QCOMPARE(scrambled.back(), '\0');
    scrambled.chop(1);
    QVERIFY(std::all_of(scrambled.cbegin(), scrambled.cend(), [](char c) { return c >= 0x20 && c <= 0x7E; }));
    QByteArray plain(all.size(), 'X');
    QCOMPARE(simple_decode(scrambled.constData(), plain.data()), all.size() % 16);
    QCOMPARE(plain, all);
}

void CommonTest::scramblerRefusesAndLeavesBuffers()
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

void CommonTest::stateIsReplacedWholeAndPrivate()
{
    QTemporaryDir folder;
    const QString path = folder.path() + "/state";
    putFile(path, "a longer old content");
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadOther));
    QVERIFY(writeWhole(path, "new"));
    QCOMPARE(fileBytes(path), QByteArray("new"));
    QCOMPARE(QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOwner), 0);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("state")); // no temporary file stays
}

void CommonTest::stateRefusesLinksAndFolders()
{
    QTemporaryDir folder;
    const QString target = folder.path() + "/target";
    putFile(target, "untouched");
    for (const QString &pointsTo : {target, folder.path() + "/nowhere"}) {
        const QString link = folder.path() + "/link";
        QFile::remove(link);
        QVERIFY(QFile::link(pointsTo, link));
        QVERIFY(!writeWhole(link, "x"));
    }
    QCOMPARE(fileBytes(target), QByteArray("untouched"));
    QVERIFY(!QFile::exists(folder.path() + "/nowhere"));
    QVERIFY(!writeWhole(folder.path(), "x"));
    QVERIFY(!writeWhole(folder.path() + "/missing/state", "x"));
}

void CommonTest::waitEndsOnSignalOrLimit()
{
    QTimer timer;
    timer.setSingleShot(true);
    Wait ended;
    ended.until(&timer, &QTimer::timeout);
    timer.start(0);
    QVERIFY(ended.run(10000));
    QVERIFY2(ended.run(), "a signal that came before the wait ends it at once");

    QElapsedTimer elapsed;
    elapsed.start();
    QVERIFY(!Wait().run(50));
    QVERIFY(elapsed.elapsed() >= 49);
}

QTEST_GUILESS_MAIN(CommonTest)
#include "CommonTest.moc"
