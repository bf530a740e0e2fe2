#include "common/Paths.h"
#include "common/StateFile.h"
#include "common/Text.h"
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
            {"1.10", "1.9", 1},  {"1.2", "1.5", -3},      // numbers, not text
            {"2.0a", "2.0", 0},  {"1.2.3rc", "1.2.0", 0}, // only one letter goes
            {"1.2", "1.2.1", 0}, {"1.2.1", "1.2", 1},     // the server's one decides how many parts are compared
            {"9.9", "", 0},      {"2.4.2", "2.4.1\n", 1}, // the line end of the file goes
        };
        QTest::ignoreMessage(QtDebugMsg, "Version Server: \"1.10\"");
        QTest::ignoreMessage(QtDebugMsg, "Version Current: \"1.9\"");
        for (const auto &[server, current, result] : cases) {
            COMPARE_CASE(server, VersionCompare(server, current), result);
        }
    }

    void texts()
    {
        const std::pair<QString, QString> cases[] = {
            {QDir_clearPath("a\\b\\..\\c"), "a/c"},
            {QDir_clearPath("/a/b/..hidden"), "/ahidden"},        // a hidden name counts as a step
            {QDir_clearPath("a/b/../../../c"), "a/b/../../../c"}, // a step too many: the text as it was
            {FormatDataSize(2047), "1KB"},
            {FormatDataSize(~quint64(0)), "17592186044415MB"},
            {latin1UpToNul(QByteArray("\xE9\0cd", 4)), QChar(0xE9)},
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
        QVERIFY(QDir_removeFolder(base + "x/../b c"));
        QCOMPARE(QDir(base).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList({".hidden", "My-CuStOm.ovpn"}));
    }

    void stateIsReplacedWholeAndPrivate()
    {
        const QTemporaryDir folder;
        const QString base = folder.path() + "/";
        putFile(base + "state", "a longer old content");
        QVERIFY(QFile::setPermissions(base + "state", QFile::ReadOwner | QFile::ReadOther));
        QVERIFY(writeWhole(base + "state", "new"));
        QCOMPARE(QFile::permissions(base + "state") & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOwner), 0);
        QVERIFY(QFile::link(base + "state", base + "link") && !writeWhole(base + "link", "x"));
        QVERIFY(QFile::link(base + "nowhere", base + "dangling") && !writeWhole(base + "dangling", "x"));
        QCOMPARE(fileBytes(base + "state"), QByteArray("new"));
        QCOMPARE(QDir(base).entryList(QDir::Files), QStringList({"link", "state"})); // no target, no temporary file
    }
};

QTEST_GUILESS_MAIN(CommonTest)
#include "CommonTest.moc"
