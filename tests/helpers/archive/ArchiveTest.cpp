#include "tests/support/Archives.h"
#include "tests/support/Cases.h"
#include "tests/support/Shell.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

static const QByteArrayList kFormats = {"a.zip", "a.7z"};

/// Where a record of a ZIP's directory has the size, and the type of a file in its mode.
constexpr int kSize = 24, kType = 41;

class ArchiveTest : public QObject
{
    Q_OBJECT

    QScopedPointer<QTemporaryDir> m_dir;

    QString path(const QByteArray &name) const { return m_dir->filePath(QString::fromUtf8(name)); }

    QByteArray shell(const QString &script) const { return runShell(m_dir->path(), script); }

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
        const QString folder = path(target), tool = KORVAN_BUNDLE "/compose";
        const QString line = name.endsWith(".7z") ? tool + "6 x '-o%1' -y '%2'" : tool + "7 -o '%2' -d '%1'";
        const QByteArray said = shell("strace -y -s5000 -etrace=%file -otrace " + line.arg(folder, path(name)) +
                                      " 2>&1; echo \"status $?\"");
        const QString calls = QString::fromUtf8(fileBytes(path("trace"))).remove("\nmkdir(\"" + folder + '"');
        const QString writing =
            "(?m)^(?=creat|mk|rename|link|symlink|unlink|rmdir|chmod|fchmodat|[lf]?chown|truncate|"
            "utime|open.*O_(WRONLY|RDWR|CREAT|TRUNC))";
        if (calls.left(calls.indexOf("\nchdir(\"" + folder + '"')).contains(QRegularExpression(writing)) ||
            calls.contains(QRegularExpression(writing + ".*(\"/|\\.\\./)"))) {
            return "it wrote elsewhere: " + calls.toUtf8();
        }
        const bool isRefused = said.endsWith("\nstatus 1\n") && said.count('\n') == 2;
        return isRefused ? said.left(said.indexOf('\n') + 1) : said == "status 0\n" ? "" : "it is odd: " + said;
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
        const QByteArray odd = "it's \"Z\xC3\xBCrich\" \xE2\x88\x95 1.ovpn" + QByteArray(200, 'n'), key(100000, 'k');
        const Items items = {{"Korvan.app/Korvan", "#!", S_IFREG | 06750},
                             {"Korvan.app/empty/", "", S_IFDIR},
                             {"a\\b/twice", "first and longer"},
                             {"./deep//er/file.key", key, S_IFREG | 0600},
                             {odd, "remote"},
                             {"a/b\\twice", "last"},
                             {"old\\Zurich", ""}};
        for (const QByteArray name : {"a.7z", "any name"}) {
            buildArchive(path(name), items);
            putFile(path(name), fileBytes(path(name)).replace("Zurich", "Z\x81rich")); // a ZIP's own code page
            for (const QByteArray &folder : {name + "1", name + "2/"}) {
                COMPARE_CASE(name, unpack(name, folder), "");
                COMPARE_CASE(name, fileBytes(path(folder + "/deep/er/file.key")), key);
                COMPARE_CASE(name, fileBytes(path(folder + "/" + odd)), "remote");
                COMPARE_CASE(name, runShell(path(folder), "cat a/b/*; stat -c %a Korvan.app/* deep/er/file.key"),
                             "last755\n755\n644\n");
            }
        }
        QVERIFY(QFile::exists(path("any name1/old/Z\xC3\xBCrich")));
    }

    void replacesFilesButNotThroughLinks()
    {
        buildArchive(path("a.zip"), {{"file", "new"}, {"hard", "new"}, {"soft", "new"}});
        buildArchive(path("through.zip"), {{"folder/file", "new"}});
        shell("mkdir out elsewhere; echo old and longer >out/file; ln canary out/hard; ln -s ../canary out/soft;"
              "ln -s ../elsewhere out/folder");
        QCOMPARE(unpack("a.zip"), "");
        QCOMPARE(shell("cat out/file out/hard out/soft"), "newnewnew");
        QVERIFY(unpack("through.zip").contains("can not unpack") && shell("ls elsewhere").isEmpty());
    }

    void refusesWhatIsHostile()
    {
        Items many(20001, {"", ""});
        std::for_each(many.begin(), many.end(), [n = 0](Item &item) mutable { item.name = QByteArray::number(n++); });
        const std::pair<Items, QByteArray> cases[] = {
            {{{"good", "x"}, {"../evil", "x"}}, "\"../evil\" leaves the target folder"},
            {{{"good", "x"}, {"a\\..\\..\\evil", "x"}}, "\"a/../../evil\" leaves the target folder"},
            {{{"good", "x"}, {"\\tmp\\evil", "x"}}, "absolute path"},
            {{{"good", "x"}, {"link", "../canary", S_IFLNK}}, "is a link"},
            {{{"x", "1"}, {"x/below a file", "2"}}, "both a file and a folder"},
            {{{"a\nb", "1"}}, "\"a?b\" has control characters"},
            {{{QByteArray("a/").repeated(1000), "", S_IFDIR}}, "too long a name"},
            {{{"small", "x"}, {"bomb", QByteArray(1 << 20, '\0'), S_IFREG | 0644, 100}}, "out of proportion"},
            {many, "more than 20000 entries"},
        };
        for (const auto &[items, reason] : cases) {
            for (const QByteArray &name : kFormats) {
                buildArchive(path(name), items);
                const QByteArray said = unpack(name);
                QVERIFY2(said.contains(": can not unpack ") && said.contains(reason) && !QDir(path("out")).exists(),
                         (name + said + reason).constData());
            }
        }
    }

    /// Cut short it is refused whole; a byte that is wrong anywhere never makes a file with wrong content.
    void refusesWhatIsDamaged()
    {
        const QByteArray page = "<html>Login failed</html>\n", content(1000, 'y');
        for (const QByteArray &name : kFormats) {
            buildArchive(path(name), {{"good", "x"}, {"bad", content}});
            const QByteArray whole = fileBytes(path(name));
            for (const QByteArray &bytes :
                 {QByteArray(), whole.left(6), whole.left(whole.size() / 2), whole.chopped(1), page.repeated(999)}) {
                putFile(path(name), bytes);
                QVERIFY2(unpack(name).contains("can not unpack") && !QDir(path("out")).exists(), name.constData());
            }
            for (int at = 0; at < whole.size(); at += 3) {
                putFile(path(name), QByteArray(whole).replace(at, 1, QByteArray(1, char(~whole[at]))));
                const QByteArray said = unpack(name), bad = fileBytes(path("out/bad"));
                QVERIFY2((said.isEmpty() || said.contains(": can not unpack ")) && (bad.isEmpty() || bad == content),
                         (name + QByteArray::number(at) + said).constData());
                QDir(path("out")).removeRecursively();
            }
        }
    }

    void tellsTheSystemsReason()
    {
        buildArchive(path("a.zip"), {{"big", QByteArray(100000, 'y')}});
        QVERIFY(shell("trap '' XFSZ; ulimit -f 1; " KORVAN_BUNDLE "/compose7 -o a.zip -d out 2>&1 || true")
                    .contains(": File too large"));
    }

    void believesNoDirectoryOfAZip()
    {
        buildArchive(path("a.zip"), {{"good", "x"}, {"bad", QByteArray(1 << 20, '\0'), S_IFREG | 0644, 100}});
        patchDirectory(kSize, QByteArray("\x00\x00\x01\x00", 4)); // a harmless size gets it no further than that size
        QVERIFY(unpack("a.zip").contains("can not unpack") && !QFile::exists(path("out/bad")));
        buildArchive(path("a.zip"), {{"good", "x"}, {"bad", QByteArray(1000, 'y')}});
        patchDirectory(kType, "\x60"); // a device
        QVERIFY(unpack("a.zip").contains("neither a file nor a folder"));
    }
};

QTEST_GUILESS_MAIN(ArchiveTest)
#include "ArchiveTest.moc"
