#include "common/Digest.h"
#include "common/Paths.h"
#include "common/StateFile.h"
#include "common/Text.h"
#include "common/Wait.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTemporaryDir>

class CommonTest : public QObject
{
    Q_OBJECT

private slots:
    void versions()
    {
        const std::tuple<const char *, const char *, int> cases[] = {
            {"1.10", "1.9", 1},                                                    // numbers, not text
            {"1.2", "1.5", -3},  {"2.0a", "2.0", 0},      {"1.2.3rc", "1.2.0", 0}, // only one letter goes
            {"1.2", "1.2.1", 0}, {"1.2.1", "1.2", 1},     // the server's one decides how many parts are compared
            {"9.9", "", 0},      {"2.4.2", "2.4.1\n", 1}, // "1\n" is no number
        };
        for (const auto &[server, current, result] : cases) {
            COMPARE_CASE(server, VersionCompare(server, current), result);
        }
    }

    void texts()
    {
        const std::pair<QString, QString> cases[] = {
            {GetStringBetween(";key=abc;", "key=", ";"), "abc"},
            {GetStringBetween("ab;c", "zz", ";"), "b"}, // no opening text: starts at that text's length - 1
            {GetStringBetween("a;c;", "zz", ";"), ""},
            {GetStringBetween("key=abc", "key=", ";"), ""},
            {QDir_clearPath("a/b/../c"), "a/c"},
            {QDir_clearPath("/x/y/../../z"), "/z"},
            {QDir_clearPath("a\\b\\..\\c"), "a/c"},
            {QDir_clearPath("/X.app/Contents/MacOS/.."), "/X.app/Contents"},
            {QDir_clearPath("/a/b/..hidden"), "/ahidden"},        // a hidden name counts as a step
            {QDir_clearPath("a/b/../../../c"), "a/b/../../../c"}, // a step too many: the text as it was
            {QDir_clearPath("/../b"), "/../b"},
            {FormatDataSize(1023), "1023B"},
            {FormatDataSize(2047), "1KB"},
            {FormatDataSize(1048576), "1MB"},
            {FormatDataSize(~quint64(0)), "17592186044415MB"},
            {UrlFormatString("Ab é"), "%41%62%20%C3%A9"}, // every byte is escaped
            {latin1UpToNul(QByteArray("\xE9\0cd", 4)), QChar(0xE9)},
            {md5("abc"), "900150983cd24fb0d6963f7d28e17f72"},
        };
        for (const auto &[text, expected] : cases) {
            QCOMPARE(text, expected);
        }
    }

    void foldersAreEmptied()
    {
        const QTemporaryDir folder;
        const QString base = folder.path() + "/";
        for (const char *name : {"a.ovpn", "My-CuStOm.ovpn", ".hidden", "b c/d/e", "z.ovpn"}) {
            putFile(base + name, "x");
        }
        QVERIFY2(!ClearPath(base), "a folder stays, and is no reason to stop");
        QCOMPARE(QDir(base, {}, {}, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).entryList(),
                 QStringList({".hidden", "My-CuStOm.ovpn", "b c"}));
        QVERIFY(QDir_removeFolder(base + "x/../b c") && !QDir(base + "b c").exists());
        QVERIFY(ClearPath(base) && ClearPath(base + "missing/"));
    }

    void stateIsReplacedWholeAndPrivate()
    {
        const QTemporaryDir folder;
        const QString base = folder.path() + "/";
        putFile(base + "state", "a longer old content");
        QVERIFY(QFile::setPermissions(base + "state", QFile::ReadOwner | QFile::ReadOther));
        QVERIFY(writeWhole(base + "state", "new"));
        QCOMPARE(fileBytes(base + "state"), QByteArray("new"));
        QCOMPARE(QFile::permissions(base + "state") & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOwner), 0);
        QVERIFY(QFile::link(base + "state", base + "link") && QFile::link(base + "nowhere", base + "dangling"));
        for (const char *path : {"link", "dangling", "", "missing/state"}) {
            QVERIFY2(!writeWhole(base + path, "x"), path);
        }
        QCOMPARE(fileBytes(base + "state"), QByteArray("new"));
        QCOMPARE(QDir(base).entryList(QDir::Files), QStringList({"link", "state"})); // no target, no temporary file
    }

    void waitEndsOnSignalOrLimit()
    {
        Wait ended;
        ended.until(this, &QObject::objectNameChanged);
        setObjectName("changed");
        QVERIFY2(ended.run(), "a signal that came before the wait ends it at once");
        QVERIFY(!Wait().run(50));
    }
};

QTEST_GUILESS_MAIN(CommonTest)
#include "CommonTest.moc"
