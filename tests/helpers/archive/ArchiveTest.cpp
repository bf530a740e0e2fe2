#include "tests/support/Archives.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

class ArchiveTest : public QObject
{
    Q_OBJECT

    QScopedPointer<QTemporaryDir> m_dir;

    QString path(const QByteArray &name) const { return m_dir->filePath(QString::fromUtf8(name)); }

    /// Puts `bytes` at `offset` of the last record in the directory at the end of a.zip.
    void patchDirectory(int offset, const QByteArray &bytes) const
    {
        QByteArray zip = fileBytes(path("a.zip"));
        putFile(path("a.zip"), zip.replace(zip.lastIndexOf("PK\x01\x02") + offset, bytes.size(), bytes));
    }

    /// Runs the archive's tool under a system call tracer, and returns what it complained about, or an empty text.
    /// All calls that write must come after the call that enters the target folder, and name no way out of it.
    QByteArray unpack(const QByteArray &name, const QByteArray &target = "out") const
    {
        const QString folder = path(target), archive = path(name);
        QProcess process;
        process.start("strace", QStringList{"-y", "-s", "5000", "-e", "trace=%file", "-o", path("trace")} +
                                    (name.endsWith(".7z")
                                         ? QStringList{KORVAN_BUNDLE "/compose6", "x", "-o" + folder, "-y", archive}
                                         : QStringList{KORVAN_BUNDLE "/compose7", "-o", archive, "-d", folder}));
        if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit) {
            return "it crashed or hung";
        }
        const QString calls = QString::fromUtf8(fileBytes(path("trace"))).remove("\nmkdir(\"" + folder + '"');
        const QString writing =
            "(?m)^(?=creat|mk|rename|link|symlink|unlink|rmdir|chmod|fchmodat|[lf]?chown|truncate|"
            "utime|open.*O_(WRONLY|RDWR|CREAT|TRUNC))";
        if (calls.left(calls.indexOf("\nchdir(\"" + folder + '"')).contains(QRegularExpression(writing)) ||
            calls.contains(QRegularExpression(writing + ".*(\"/|\\.\\./)"))) {
            return "it wrote elsewhere: " + calls.toUtf8();
        }
        const QByteArray said = process.readAllStandardError();
        const bool oneLine = process.exitCode() == 1 && said.indexOf('\n') == said.size() - 1;
        return oneLine || (said.isEmpty() && process.exitCode() == 0) ? said : "status or output is odd: " + said;
    }

    /// Whether the archive is refused whole, for this reason.
    bool refuses(const QByteArray &name, const QByteArray &reason) const
    {
        const QByteArray said = unpack(name);
        qInfo("%s", said.left(200).trimmed().constData());
        return said.contains(": can not unpack ") && said.contains(reason) && !QDir(path("out")).exists();
    }

private slots:
    void init()
    {
        qputenv("ASAN_OPTIONS", "detect_leaks=0"); // impossible when traced
        m_dir.reset(new QTemporaryDir);
        putFile(path("canary"), "alive");
    }
    void cleanup() { QCOMPARE(fileBytes(path("canary")), "alive"); }

    void unpacks()
    {
        const QByteArray odd = "it's \"Z\xC3\xBCrich\" \xE2\x88\x95 1.ovpn" + QByteArray(200, 'n');
        const QByteArray key(100000, 'k');
        for (const QByteArray name : {"any name", "a.7z"}) {
            buildArchive(path(name), {{"Korvan.app/Korvan", "#!", S_IFREG | 06750},
                                      {"Korvan.app/empty/", "", S_IFDIR},
                                      {"./deep//er/file.key", key, S_IFREG | 0600},
                                      {odd, "remote"}});
            for (const QByteArray &folder : {name + "1", name + "2/"}) {
                COMPARE_CASE(name, unpack(name, folder), "");
                COMPARE_CASE(name, fileBytes(path(folder + "/deep/er/file.key")), key);
                COMPARE_CASE(name, fileBytes(path(folder + "/" + odd)), "remote");
                QProcess stat;
                stat.setWorkingDirectory(path(folder));
                stat.start("stat", {"-c", "%a", "Korvan.app/Korvan", "Korvan.app/empty", "deep/er/file.key"});
                stat.waitForFinished();
                COMPARE_CASE(name, stat.readAll(), "755\n755\n644\n");
            }
        }
    }

    void replacesFilesButNotThroughLinks()
    {
        buildArchive(path("a.zip"), {{"file", "new"}, {"hard", "new"}, {"soft", "new"}});
        buildArchive(path("through.zip"), {{"folder/file", "new"}});
        putFile(path("out/file"), "old and longer");
        QCOMPARE(QProcess::execute("sh", {"-c",
                                          "cd \"$0\"; mkdir elsewhere; ln canary out/hard; ln -s ../canary out/soft;"
                                          "ln -s ../elsewhere out/folder",
                                          m_dir->path()}),
                 0);
        QCOMPARE(unpack("a.zip"), "");
        for (const char *name : {"out/file", "out/hard", "out/soft"}) {
            QCOMPARE(fileBytes(path(name)), "new");
        }
        QVERIFY(unpack("through.zip").contains("can not unpack"));
        QVERIFY(QDir(path("elsewhere")).isEmpty());
    }

    void refusesHostileEntries()
    {
        Items many;
        for (int i = 0; i < 100000; ++i) {
            many += {"file" + QByteArray::number(i), ""};
        }
        const std::pair<Items, QByteArray> cases[] = {
            {{{"good", "x"}, {"../evil", "x"}}, "\"../evil\" leaves the target folder"},
            {{{"good", "x"}, {"a/./../../evil", "x"}}, "leaves the target folder"},
            {{{"good", "x"}, {"..", "", S_IFDIR}}, "leaves the target folder"},
            {{{"good", "x"}, {"/tmp/evil", "x"}}, "absolute path"},
            {{{"good", "x"}, {"link", "../canary", S_IFLNK}}, "is a link"},
            {{{"d", "..", S_IFLNK}, {"d/canary", "x"}}, "is a link"},
            {{{"a/x", "1"}, {"a/./x", "2"}}, "\"a/x\" comes twice"},
            {{{"x", "1"}, {"x/below a file", "2"}}, "both a file and a folder"},
            {{{"x/y", "1"}, {"x", "2"}}, "both a file and a folder"},
            {{{"a\nb", "1"}}, "\"a?b\" has control characters"},
            {{{QByteArray("a/").repeated(1000), "", S_IFDIR}}, "too long a name"},
            {many, "more than 20000 entries"},
        };
        for (const auto &[items, reason] : cases) {
            for (const char *name : {"a.zip", "a.7z"}) {
                buildArchive(path(name), items);
                QVERIFY(refuses(name, reason));
            }
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
                QVERIFY(refuses(name, ""));
            }
        }
        buildArchive(path("a.zip"), {{"x", "y"}});
        QVERIFY(QFile::copy(path("a.zip"), path("zip.7z")));
        QVERIFY(refuses("zip.7z", "it is no 7z archive") && refuses("", "it is no file") &&
                refuses("none", "No such file"));
        QCOMPARE(QProcess::execute(KORVAN_BUNDLE "/compose7", {path("a.zip")}), 2);
    }

    void leavesNoDamagedFile()
    {
        buildArchive(path("a.zip"), {{"small", "x"}, {"bomb", QByteArray(1 << 20, '\0'), S_IFREG | 0644, 2048}});
        QVERIFY(refuses("a.zip", "out of proportion"));
        // A directory that states a harmless size gets it no further than that size.
        patchDirectory(24, QByteArray("\x00\x00\x01\x00", 4));
        QVERIFY(unpack("a.zip").contains("can not unpack") && !QFile::exists(path("out/bomb")));

        buildArchive(path("a.zip"), {{"good", "x"}, {"bad", QByteArray(1000, 'y')}});
        patchDirectory(16, "crc?");
        QVERIFY(unpack("a.zip").contains("\"bad\": "));
        QVERIFY(QFile::exists(path("out/good")) && !QFile::exists(path("out/bad")));
        for (const char *type : {"\x20", "\x60", "\xc0"}) { // devices and a socket
            patchDirectory(41, type);
            QVERIFY(unpack("a.zip").contains("neither a file nor a folder"));
        }
    }
};

QTEST_GUILESS_MAIN(ArchiveTest)
#include "ArchiveTest.moc"
