#include "tests/support/Archives.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

/// Puts `bytes` at `offset` of the last record in the directory at the end of the ZIP.
static void patchDirectory(const QString &path, int offset, const QByteArray &bytes)
{
    QByteArray zip = fileBytes(path);
    zip.replace(zip.lastIndexOf("PK\x01\x02") + offset, bytes.size(), bytes);
    putFile(path, zip);
}

class ArchiveTest : public QObject
{
    Q_OBJECT

    QScopedPointer<QTemporaryDir> m_dir;
    QByteArray m_said; ///< standard error of the last run

    QString path(const QByteArray &name) const { return m_dir->filePath(QString::fromUtf8(name)); }

    /// Runs the archive's tool under a system call tracer, checks that all writing calls stayed in the folder, and
    /// returns the exit status.
    int unpack(const QString &archive, const QString &folder)
    {
        const QString bundle = KORVAN_BUNDLE;
        const bool zip = !archive.endsWith(".7z");
        QStringList line = {"-y", "-s", "5000", "-e", "trace=%file", "-o", path("trace")};
        line += zip ? QStringList{bundle + "/compose7", "-o", archive, "-d", folder}
                    : QStringList{bundle + "/compose6", "x", "-o" + folder, "-y", archive};
        QProcess process;
        process.start("strace", line);
        if (!process.waitForFinished(60000)) {
            return -1;
        }
        m_said = process.readAllStandardError();
        checkTrace(QStringLiteral("mkdir(\"%1\"").arg(folder), QStringLiteral("chdir(\"%1\"").arg(folder));
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    /// Every call that writes comes after the call that enters the target folder, and names no way out of it.
    void checkTrace(const QString &making, const QString &entering)
    {
        const QRegularExpression writing(
            "^(creat|mk|rename|link|symlink|unlink|rmdir|chmod|fchmodat|[lf]?chown|truncate|utime)|"
            "^open.*O_(WRONLY|RDWR|CREAT|TRUNC)");
        const QRegularExpression outside("\"/|\\.\\./");
        bool entered = false;
        for (const QString &call : QString::fromUtf8(fileBytes(path("trace"))).split(QLatin1Char('\n'))) {
            entered = entered || call.startsWith(entering);
            if (writing.match(call).hasMatch() && !call.startsWith(making)) {
                QVERIFY2(entered && !outside.match(call).hasMatch(), qPrintable(call));
            }
        }
        QCOMPARE(fileBytes(path("canary")), QByteArray("alive"));
    }

    void expectRefusal(const QString &archive, const QByteArray &reason)
    {
        QCOMPARE(unpack(archive, path("out")), 1);
        QVERIFY2(m_said.contains(reason), m_said.constData());
        QVERIFY2(m_said.indexOf('\n') == m_said.size() - 1, m_said.constData());
        QVERIFY(!QFileInfo::exists(path("out")));
    }

private slots:
    void init()
    {
        qputenv("ASAN_OPTIONS", "detect_leaks=0"); // impossible when traced
        m_dir.reset(new QTemporaryDir);
        putFile(path("canary"), "alive");
    }

    void unpacks_data()
    {
        QTest::addColumn<QString>("archive");
        QTest::addColumn<QString>("folder");
        QTest::newRow("ZIP") << "a.zip"
                             << "out";
        QTest::newRow("ZIP of any name, slash") << "config"
                                                << "out/";
        QTest::newRow("7z") << "a.7z"
                            << "out";
        QTest::newRow("7z, slash") << "a.7z"
                                   << "out/";
    }

    void unpacks()
    {
        QFETCH(QString, archive);
        QFETCH(QString, folder);
        const QByteArray odd = "it's \"Z\xC3\xBCrich\" \xE2\x88\x95 1.ovpn" + QByteArray(200, 'n');
        const QByteArray key(100000, 'k');
        buildArchive(m_dir->filePath(archive), {{"Korvan.app/Korvan", "#!", S_IFREG | 06750},
                                                {"Korvan.app/empty/", "", S_IFDIR},
                                                {"./deep//er/file.key", key, S_IFREG | 0600},
                                                {odd, "remote"}});
        QCOMPARE(unpack(m_dir->filePath(archive), m_dir->filePath(folder)), 0);
        QCOMPARE(m_said, QByteArray());
        QCOMPARE(fileBytes(path("out/deep/er/file.key")), key);
        QCOMPARE(fileBytes(path("out/" + odd)), QByteArray("remote"));
        const mode_t mask = umask(0);
        umask(mask);
        const QVector<QPair<const char *, mode_t>> modes = {{"out/Korvan.app/Korvan", S_IFREG | 0755},
                                                            {"out/Korvan.app/empty", S_IFDIR | 0755},
                                                            {"out/deep/er/file.key", S_IFREG | 0644}};
        for (const auto &[name, mode] : modes) {
            struct stat info = {};
            stat(qPrintable(path(name)), &info);
            QCOMPARE(info.st_mode, mode & ~mask);
        }
    }

    void replacesFilesButNotThroughLinks()
    {
        buildArchive(path("a.zip"), {{"file", "new"}, {"hard", "new"}, {"soft", "new"}});
        buildArchive(path("through.zip"), {{"folder/file", "new"}});
        putFile(path("out/file"), "old and longer");
        QDir(m_dir->path()).mkdir("elsewhere");
        QCOMPARE(link(qPrintable(path("canary")), qPrintable(path("out/hard"))), 0);
        QCOMPARE(symlink("../canary", qPrintable(path("out/soft"))), 0);
        QCOMPARE(symlink("../elsewhere", qPrintable(path("out/folder"))), 0);
        QCOMPARE(unpack(path("a.zip"), path("out")), 0);
        for (const char *name : {"out/file", "out/hard", "out/soft"}) {
            QCOMPARE(fileBytes(path(name)), QByteArray("new"));
        }
        QCOMPARE(unpack(path("through.zip"), path("out")), 1);
        QVERIFY(QDir(path("elsewhere")).isEmpty());
    }

    void refuses_data()
    {
        QTest::addColumn<Items>("items");
        QTest::addColumn<QByteArray>("reason");
        const auto row = [](const Items &items, const QByteArray &reason) {
            QTest::newRow(items.last().name.left(20).constData()) << items << reason;
        };
        row({{"good", "x"}, {"../evil", "x"}}, "\"../evil\" leaves the target folder");
        row({{"good", "x"}, {"a/./../../evil", "x"}}, "leaves the target folder");
        row({{"good", "x"}, {"..", "", S_IFDIR}}, "leaves the target folder");
        row({{"good", "x"}, {"/tmp/evil", "x"}}, "absolute path");
        row({{"good", "x"}, {"link", "../canary", S_IFLNK}}, "is a link");
        row({{"d", "..", S_IFLNK}, {"d/canary", "x"}}, "is a link");
        row({{"a/x", "1"}, {"a/./x", "2"}}, "\"a/x\" comes twice");
        row({{"x", "1"}, {"x/below a file", "2"}}, "both a file and a folder");
        row({{"x/y", "1"}, {"x", "2"}}, "both a file and a folder");
        row({{"a\nb", "1"}}, "\"a?b\" has control characters");
        row({{QByteArray("a/").repeated(1000), "", S_IFDIR}}, "too long a name");
        Items many;
        for (int i = 0; i < 100000; ++i) {
            many += {"file" + QByteArray::number(i), ""};
        }
        row(many, "more than 20000 entries");
    }

    void refuses()
    {
        QFETCH(Items, items);
        QFETCH(QByteArray, reason);
        for (const char *name : {"a.zip", "a.7z"}) {
            buildArchive(path(name), items);
            expectRefusal(path(name), reason);
        }
    }

    void refusesWhatIsNoArchive()
    {
        for (const char *name : {"a.zip", "a.7z"}) {
            buildArchive(path(name), {{"one", QByteArray(500, 'x')}, {"two", "y"}});
            const QByteArray whole = fileBytes(path(name));
            for (const QByteArray &bytes :
                 {QByteArray(), whole.left(6), whole.left(whole.size() / 2), whole.chopped(1),
                  QByteArray("<html>Login failed</html>\n").repeated(999)}) {
                putFile(path(name), bytes);
                expectRefusal(path(name), "can not unpack");
            }
        }
        buildArchive(path("a.zip"), {{"x", "y"}});
        QVERIFY(QFile::copy(path("a.zip"), path("zip.7z")));
        expectRefusal(path("zip.7z"), "it is no 7z archive");
        expectRefusal(m_dir->path(), "it is no file");
        expectRefusal(path("none"), "No such file");
        QCOMPARE(QProcess::execute(KORVAN_BUNDLE "/compose7", {path("a.zip")}), 2);
    }

    void refusesABomb()
    {
        buildArchive(path("a.zip"), {{"small", "x"}, {"bomb", QByteArray(1 << 20, '\0'), S_IFREG | 0644, 2048}});
        expectRefusal(path("a.zip"), "out of proportion");
        // A directory that states a harmless size gets it no further than that size.
        patchDirectory(path("a.zip"), 24, QByteArray("\x00\x00\x01\x00", 4));
        QCOMPARE(unpack(path("a.zip"), path("out")), 1);
        QVERIFY(!QFileInfo::exists(path("out/bomb")));
    }

    void leavesNoDamagedFile()
    {
        buildArchive(path("a.zip"), {{"good", "x"}, {"bad", QByteArray(1000, 'y')}});
        patchDirectory(path("a.zip"), 16, "crc?");
        QCOMPARE(unpack(path("a.zip"), path("out")), 1);
        QVERIFY2(m_said.contains("\"bad\": "), m_said.constData());
        QVERIFY(QFileInfo::exists(path("out/good")) && !QFileInfo::exists(path("out/bad")));
        for (const char *type : {"\x20", "\x60", "\xc0"}) { // devices and a socket
            patchDirectory(path("a.zip"), 41, type);
            QCOMPARE(unpack(path("a.zip"), path("devices")), 1);
            QVERIFY2(m_said.contains("neither a file nor a folder"), m_said.constData());
        }
    }
};

QTEST_GUILESS_MAIN(ArchiveTest)
#include "ArchiveTest.moc"
