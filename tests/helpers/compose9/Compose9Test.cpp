#include "tests/support/TestFiles.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

/// The programs and scripts of a bundle beside the program itself.
static const QStringList kHelpers = {"compose",     "compose4",   "composec",      "compose6",
                                     "compose7",    "compose9",   "up.sh",         "down.sh",
                                     "tools/route", "tools/ping", "tools/netstat", "tools/defaults"};

/// Updates tiny bundles, whose programs are scripts that note their start, with real processes.
class Compose9Test : public QObject
{
    Q_OBJECT

    QScopedPointer<QTemporaryDir> m_dir;

    QString path(const QString &name) const { return m_dir->filePath(name); }
    QString installed(const QString &name) const { return path("Korvan.app/Contents/MacOS/" + name); }
    QString staged(const QString &name) const { return path("update.temp/Korvan.app/Contents/MacOS/" + name); }
    QByteArray started() const { return fileBytes(path("started")); }

    void makeBundle(const QString &parent, const QByteArray &version) const
    {
        const QString folder = path(parent + "Korvan.app/Contents/MacOS/");
        putFile(folder + "version", version);
        putScript(folder + "Korvan",
                  "echo \"$(cat \"$(dirname \"$0\")\"/version) $*\" >>" + path("started").toUtf8() + "\n");
        for (const QString &name : kHelpers) {
            putScript(folder + name, version);
        }
    }

    /// An installed 2.4.1 with state of the user, and an update as the start-up leaves it.
    void makeUpdate()
    {
        m_dir.reset(new QTemporaryDir);
        makeBundle("", "2.4.1");
        for (const char *name : {"cfg/login", "cfg/OpenVPN/a.ovpn", "setting.ini", "l2tp", "defgate", "log.txt"}) {
            putFile(installed(name), name);
        }
        chmod(qPrintable(installed("cfg/login")), 0600);
        stage();
    }

    /// Unpacks 2.5.0 and moves the helper out of the installed bundle.
    void stage() const
    {
        QDir(path("update.temp")).removeRecursively();
        makeBundle("update.temp/", "2.5.0");
        putFile(path("update.temp/update.zip"), "zip");
        QFile::remove(installed("compose9"));
        QFile::copy(KORVAN_BUNDLE "/compose9", path("update.temp/compose9"));
    }

    /// Runs the helper, under the command in front of it where one is given, and returns its exit status.
    int update(const QStringList &front = {}) const
    {
        QStringList line = front + QStringList{path("update.temp/compose9"), path("update.temp/"), "Korvan"};
        QProcess process;
        process.start(line.takeFirst(), line);
        return process.waitForFinished(90000) && process.exitStatus() == QProcess::NormalExit ? process.exitCode()
                                                                                              : -1;
    }

    /// The version of which every file of the installed bundle is, or nothing when they differ.
    QByteArray wholeVersion() const
    {
        const QByteArray version = fileBytes(installed("version"));
        for (const QString &name : kHelpers) {
            if (name != "compose9" && fileBytes(installed(name)) != "#!/bin/bash\n" + version) {
                return {};
            }
        }
        const bool state = fileBytes(installed("cfg/login")) == "cfg/login" && fileBytes(installed("l2tp")) == "l2tp";
        return state && QProcess::execute(installed("Korvan"), {}) == 0 ? version : QByteArray();
    }

    bool isTidy() const
    {
        return QDir(m_dir->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot) ==
               QStringList{"Korvan.app", "started"};
    }

private slots:
    void init()
    {
        qunsetenv("KORVAN_RESTART_ARGUMENT");
        qputenv("ASAN_OPTIONS", "detect_leaks=0"); // impossible when traced
        makeUpdate();
    }

    void installs()
    {
        const bool root = geteuid() == 0;
        QCOMPARE(chown(qPrintable(installed("Korvan")), root ? 65534 : geteuid(), getegid()), 0);
        QCOMPARE(chmod(qPrintable(installed("Korvan")), 04755), 0);
        QCOMPARE(chmod(qPrintable(path("update.temp/Korvan.app/Contents")), 0700), 0); // unpacked with a strict umask
        qputenv("KORVAN_RESTART_ARGUMENT", "-hide");
        QCOMPARE(update(), 0);
        QCOMPARE(started(), QByteArray("2.5.0 -hide\n"));
        QCOMPARE(wholeVersion(), QByteArray("2.5.0"));
        QVERIFY(isTidy());
        for (const char *name : {"cfg/OpenVPN/a.ovpn", "setting.ini", "defgate"}) {
            QCOMPARE(fileBytes(installed(name)), QByteArray(name));
        }
        QVERIFY(fileBytes(installed("log.txt")).startsWith("log.txt"));
        QVERIFY(fileBytes(installed("log.txt")).endsWith("SUCCESS: updated from 2.4.1 to 2.5.0\r\n"));
        struct stat info = {};
        QCOMPARE(stat(qPrintable(installed("Korvan")), &info), 0);
        QCOMPARE(info.st_mode & 07777, 04755U);
        QCOMPARE(info.st_uid, root ? 65534 : geteuid());
        QCOMPARE(stat(qPrintable(installed("cfg/login")), &info), 0);
        QCOMPARE(info.st_mode & 07777, 0600U);
        QCOMPARE(stat(qPrintable(path("Korvan.app/Contents")), &info), 0);
        QCOMPARE(info.st_mode & 07777, 0755U);
    }

    void keepsTheOldVersion_data()
    {
        QTest::addColumn<QString>("harm");  // to the unpacked bundle, as a shell command in its Contents/MacOS
        QTest::addColumn<QString>("fault"); // injected into the helper
        QTest::addColumn<QByteArray>("reason");
        const QString none;
        QTest::newRow("no bundle") << "rm -r ../../../Korvan.app" << none
                                   << QByteArray("the archive has no Korvan.app");
        QTest::newRow("a link") << "ln -s /etc/passwd x" << none << QByteArray("neither a file nor a folder");
        QTest::newRow("linked program") << "ln -sf /bin/true Korvan" << none
                                        << QByteArray("neither a file nor a folder");
        QTest::newRow("no helper") << "rm compose4" << none << QByteArray("compose4: No such file");
        QTest::newRow("not executable") << "chmod -x up.sh" << none << QByteArray("up.sh is no program");
        QTest::newRow("empty") << ": >Korvan" << none << QByteArray("Korvan is no program");
        QTest::newRow("no version") << ": >version" << none << QByteArray("does not tell its version");
        QTest::newRow("ends") << "echo 'exit 3' >>Korvan" << none << QByteArray("it ended at once with status 3");
        QTest::newRow("crashes") << "echo 'kill -SEGV $$' >>Korvan" << none
                                 << QByteArray("by a signal: Segmentation fault");
        QTest::newRow("no library") << "echo '#!/none' >Korvan" << none << QByteArray("with status 127");
        QTest::newRow("disk full") << none << "sendfile:error=ENOSPC" << QByteArray("No space left");
        QTest::newRow("read-only") << none << "rename,chmod:error=EROFS" << QByteArray("Read-only file");
        QTest::newRow("no exchange") << none << "renameat2:error=EINVAL:when=2+" << QByteArray("can not exchange");
    }

    void keepsTheOldVersion()
    {
        QFETCH(QString, harm);
        QFETCH(QString, fault);
        QFETCH(QByteArray, reason);
        QProcess::execute("bash", {"-c", "cd " + staged("") + "; " + harm});
        const QStringList strace = {"strace", "-o", path("started.trace"), "-e", "inject=" + fault};
        QCOMPARE(update(fault.isEmpty() ? QStringList() : strace), 1);
        QFile::remove(path("started.trace"));
        QTRY_VERIFY(started().endsWith("2.4.1 \n"));
        QCOMPARE(wholeVersion(), QByteArray("2.4.1"));
        QVERIFY(QFileInfo(installed("compose9")).isExecutable());
        const QByteArray log = fileBytes(installed("log.txt"));
        QVERIFY2(log.contains("[ERROR]Update failed: ") && log.contains(reason), log.constData());
        QVERIFY(isTidy());
    }

    void waitsForTheProgramToEnd()
    {
        QFile::remove(installed("Korvan"));
        QVERIFY(QFile::copy("/bin/sleep", installed("Korvan")));
        QProcess running;
        running.start(installed("Korvan"), {"2"});
        QVERIFY(running.waitForStarted());
        QCOMPARE(update(), 0);
        QCOMPARE(running.state(), QProcess::Running); // as far as this process has looked
        QVERIFY(running.waitForFinished(0) && running.exitCode() == 0);
        QVERIFY(started().startsWith("2.5.0"));
    }

    void doesOneUpdateAtATime()
    {
        const int lock = open(qPrintable(m_dir->path()), O_RDONLY | O_CLOEXEC);
        QCOMPARE(flock(lock, LOCK_EX), 0);
        QCOMPARE(update(), 1);
        close(lock);
        QVERIFY(fileBytes(installed("log.txt")).contains("another update is being installed"));
        QVERIFY(QFileInfo(installed("compose9")).isExecutable());
        QVERIFY(QFileInfo::exists(staged("Korvan"))); // it is the other one's
    }

    /// Killed at the first, second, ... call of each kind that changes something, it leaves one whole version that
    /// starts, and a later update works and clears up.
    void survivesBeingKilled_data()
    {
        QTest::addColumn<QString>("call");
        for (const char *call : {"renameat2", "rename", "unlinkat", "mkdir", "chmod", "lchown", "write", "openat",
                                 "flock", "sync", "sendfile", "clone"}) {
            QTest::newRow(call) << call;
        }
    }

    void survivesBeingKilled()
    {
        QFETCH(QString, call);
        int kills = 0;
        for (int status = -1; status != 0; ++kills) {
            makeUpdate();
            status = update({"strace", "-o", path("started.trace"), "-e",
                             QStringLiteral("inject=%1:signal=KILL:when=%2").arg(call).arg(kills + 1)});
            const QByteArray version = wholeVersion();
            QVERIFY2(version == "2.4.1" || version == "2.5.0", qPrintable(call + QString::number(kills)));
            QVERIFY2(status == 0 || kills < 200, "it can not be killed");
            if (call.startsWith("rename") && status != 0) {
                QFile::remove(path("started.trace"));
                stage();
                QCOMPARE(update(), 0);
                QVERIFY(wholeVersion() == "2.5.0" && isTidy());
            }
        }
        qInfo("killed %d times", kills - 1);
    }
};

QTEST_GUILESS_MAIN(Compose9Test)
#include "Compose9Test.moc"
