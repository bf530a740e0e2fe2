#include "tests/support/Cases.h"
#include "tests/support/Shell.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <unistd.h>

/// Updates tiny bundles, whose programs are scripts that note their start, with real processes.
class Compose9Test : public QObject
{
    Q_OBJECT

    /// The programs and scripts of a bundle beside the program itself and the helper.
    const QString m_helpers = "broker compose compose4 composec compose6 compose7 network standin up.sh down.sh "
                              "tools/route tools/ping tools/netstat tools/defaults ";
    const QString m_enter = "cd Korvan.app/Contents/MacOS; ";
    QScopedPointer<QTemporaryDir> m_dir;

    QString path(const QString &name) const { return m_dir->filePath(name); }
    QString installed(const QString &name) const { return path("Korvan.app/Contents/MacOS/" + name); }
    QByteArray log() const { return fileBytes(installed("log.txt")); }
    QByteArray started() const { return fileBytes(path("started")); }

    QByteArray shell(const QString &script) const { return runShell(m_dir->path(), script); }

    /// The command that makes a bundle below the folder.
    QString bundle(const QString &folder, const QString &version) const
    {
        return "(mkdir -p " + folder + "/Korvan.app/Contents/MacOS/tools; cd " + folder + "; " + m_enter + "echo " +
               version + " | tee version compose9 " + m_helpers + R"(
               echo '#!/bin/bash' >Korvan; echo 'echo $(<${0%/*}/version) $* >>')" +
               path("started") + " >>Korvan; chmod +x Korvan compose9 " + m_helpers + "); ";
    }

    /// Unpacks 2.5.0 and moves the helper out of the installed bundle.
    void stage() const
    {
        shell("rm -rf update.temp; " + bundle("update.temp", "2.5.0") +
              "cp " KORVAN_BUNDLE "/compose9 update.temp; " + m_enter + "rm compose9");
    }

    /// Runs the helper, under a tracer that injects the fault where one is given. Returns its exit status, the
    /// versions that the files of the installed bundle are of, the user's state, and what lies beside the bundle.
    QByteArray update(const QString &fault = {}) const
    {
        const QString tracer = fault.isEmpty() ? QString() : "strace -o/dev/null -e inject=" + fault + ' ';
        return shell(tracer + "update.temp/compose9 update.temp/ Korvan; echo $?; " + m_enter + "sort -u version " +
                     m_helpers + "; cat cfg/login; ./Korvan -check || echo broken; cd ../../..; ls -A")
            .simplified();
    }

    /// How the archive of 2.5.0 is signed, what is done afterwards, and the reason of the refusal.
    static QVector<std::pair<QString, const char *>> signatures()
    {
        const QString key = KORVAN_BUILD "/lab/update.key";
        const QString sign = "minisign -S -m a.zip -x a.sig -s ";
        return {
            {sign + key + " -t 'Korvan 2.5.0'", ""},
            {sign + key + " -t 'Korvan 2.5.0'; sed -i 's/$/\r/' a.sig", ""},
            {": >a.sig", "it is not signed"},
            {"minisign -G -W -p o.pub -s o.key; " + sign + "o.key -t 'Korvan 2.5.0'",
             "a key that this program does not"},
            {"minisign -G -W -p o.pub -s o.key; " + sign + "o.key -t 'Korvan 2.5.0'; " +
                 // The number of our key in the other key's signature.
                 "{ sed -n 1p a.sig; (base64 -d <<<$(sed -n 2p a.sig) | head -c 2; base64 -d <<<$(tail "
                 "-1 " KORVAN_BUILD
                 "/lab/update.pub) | tail -c +3 | head -c 8; base64 -d <<<$(sed -n 2p a.sig) | tail -c 64) | "
                 "base64 -w 0; echo; sed -n 3,4p a.sig; } >b; mv b a.sig",
             "not right"},
            {sign + key + " -t 'Korvan 2.5.0'; echo >>a.zip", "not right"},
            {sign + key + " -t 'Korvan 2.4.0'; sed -i s/2.4.0/2.5.0/ a.sig", "not right"},
            {sign + key + " -t 'Korvan 2.5.0'; sed -i 4d a.sig", "damaged"},
            {sign + key + " -l -t 'Korvan 2.5.0'", "damaged"}, // would have to be read whole to be checked
            {sign + key + " -t 'Other 2.5.0'", "for another program"},
            {sign + key + " -t 'Korvan 2.4.0'", "2.4.0 is older than the installed 2.4.1"},
            {sign + key + " -t 'Korvan 2.10'", "signed as version 2.10 and holds version 2.5.0"},
            {"mkfifo a.sig", "is no file"},
        };
    }

    /// Packs what is staged as a.zip, for a program with a key, and signs it by that command.
    void pack(const QString &how) const
    {
        shell("cp " KORVAN_BUNDLE "/compose[79] Korvan.app/Contents/MacOS; tail -1 " KORVAN_BUILD
              "/lab/update.pub >Korvan.app/Contents/MacOS/update-keys; cd "
              "update.temp; cp ../Korvan.app/Contents/MacOS/compose* Korvan.app/Contents/MacOS; zip -qr ../a.zip "
              "Korvan.app; cd ..; rm -r update.temp; { " +
              how + "; } >/dev/null");
    }

private slots:
    /// An installed 2.4.1 with state of the user, and an update as the start-up leaves it.
    void init()
    {
        qputenv("ASAN_OPTIONS", "detect_leaks=0"); // impossible when traced
        m_dir.reset(new QTemporaryDir);
        shell(bundle(".", "2.4.1") + m_enter +
              "mkdir -p cfg/OpenVPN\n"
              "for f in cfg/login cfg/OpenVPN/a.ovpn setting.ini l2tp defgate log.txt; do echo ${f##*/} >$f; done");
        stage();
    }

    void installs()
    {
        // Unpacked with a strict umask.
        shell("chmod 700 update.temp/Korvan.app/Contents; " + m_enter +
              "chown nobody Korvan; chmod 4755 Korvan; chmod 600 cfg/login");
        qputenv("KORVAN_RESTART_ARGUMENT", "-hide");
        QCOMPARE(update(), "0 2.5.0 login Korvan.app started");
        qunsetenv("KORVAN_RESTART_ARGUMENT");
        QCOMPARE(started(), "2.5.0 -hide\n2.5.0 -check\n");
        QCOMPARE(shell(m_enter + "cat cfg/OpenVPN/a.ovpn setting.ini l2tp defgate; stat -c '%a %n' .. cfg/login"),
                 "a.ovpn\nsetting.ini\nl2tp\ndefgate\n755 ..\n600 cfg/login\n");
        QCOMPARE(shell(m_enter + "stat -c '%a %U' Korvan"), "4755 " + shell("[ $UID = 0 ] && echo nobody || id -un"));
        QVERIFY(log().startsWith("log.txt\n") && log().endsWith("SUCCESS: updated from 2.4.1 to 2.5.0\r\n"));
    }

    void keepsTheOldVersion()
    {
        // What harms the unpacked bundle, as a shell command in its Contents/MacOS, or a fault of the helper's calls.
        const std::tuple<const char *, const char *, const char *> cases[] = {
            {"rm -r ../../../Korvan.app", "", "the archive has no Korvan.app"},
            {"ln -s /etc/passwd x", "", "neither a file nor a folder"},
            {"rm compose4", "", "compose4: No such file"},
            {"rm network", "", "network: No such file"},
            {"echo 'exit 3' >>Korvan", "", "it ended at once with status 3"},
            {"", "sendfile:error=ENOSPC", "No space left"},
            {"", "rename,chmod:error=EROFS", "Read-only file"},
            {"", "renameat2:error=EINVAL:when=2+", "can not exchange"},
        };
        for (const auto &[harm, fault, reason] : cases) {
            init();
            shell("cd update.temp; " + m_enter + harm);
            COMPARE_CASE(reason, update(fault), "1 2.4.1 login Korvan.app started");
            QTRY_VERIFY2(started().contains("2.4.1\n"), reason);
            QVERIFY2(QFileInfo(installed("compose9")).isExecutable(), reason);
            QVERIFY2(log().contains("[ERROR]Update failed: ") && log().contains(reason), log().constData());
        }
    }

    /// Also where nothing is to be installed: the version that starts again must not meet itself.
    void waitsForTheProgramToEnd()
    {
        const std::tuple<const char *, const char *, const char *> cases[] = {
            {"true", "0 2.5.0 login Korvan.app started", "2.5.0\n"},
            {"rm -r update.temp/Korvan.app", "1 2.4.1 login Korvan.app started", "2.4.1\n"},
        };
        for (const auto &[harm, outcome, start] : cases) {
            init();
            shell(harm + QString("; cp /bin/sleep ") + installed("old"));
            QProcess running;
            running.start(installed("old"), {"2"});
            QVERIFY(running.waitForStarted());
            COMPARE_CASE(harm, update(), outcome);
            QVERIFY2(running.waitForFinished(0) && running.exitCode() == 0, harm);
            QTRY_VERIFY2(started().contains(start), harm);
        }
    }

    void doesOneUpdateAtATime()
    {
        putFile("/run/korvan/update-lock", {});
        const int lock = open("/run/korvan/update-lock", O_RDONLY | O_CLOEXEC);
        QCOMPARE(flock(lock, LOCK_EX), 0);
        QCOMPARE(update(), "1 2.4.1 login Korvan.app started update.temp"); // what was unpacked is the other one's
        QTRY_VERIFY(started().contains("2.4.1\n"));

        // Root installs for a person, whose process waits to be told.
        pack(signatures().first().first);
        int ends[2] = {-1, -1};
        QCOMPARE(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
        shell(QString(
                  "KORVAN_PERSON=65534 Korvan.app/Contents/MacOS/compose9 --install-given \"$(<a.sig)\" <a.zip >&%1")
                  .arg(ends[1]));
        close(ends[1]);
        char told[200] = {};
        recv(ends[0], told, sizeof told - 1, 0);
        QCOMPARE(told, "[ERROR]Update failed: another update is being installed\n");
        close(ends[0]);
        close(lock);
    }

    /// With a key built in, an archive is installed only with a right signature over its bytes, and before that is
    /// known nothing is written beside the bundle.
    void signedArchives()
    {
        for (const auto &[how, reason] : signatures()) {
            init();
            pack(how);
            const bool good = *reason == '\0';
            const QByteArray seen =
                shell("strace -fo calls -e trace=mkdir,rename,renameat2 Korvan.app/Contents/MacOS/"
                      "compose9 --install a.zip a.sig; echo $?; grep -q update calls && echo "
                      "written; cat Korvan.app/Contents/MacOS/version; ls -A | grep update");
            COMPARE_CASE(how.toUtf8(), seen.simplified(),
                         good               ? "0 written 2.5.0"
                         : reason[0] == 's' ? "1 written 2.4.1"
                                            : "1 2.4.1");
            QTRY_VERIFY2(started().contains(good ? "2.5.0\n" : "2.4.1\n"), qPrintable(how));
            QVERIFY2(log().contains(reason), log().constData());
        }
        init();
        shell(m_enter + ": >update-keys");
        QCOMPARE(update().left(7), "1 2.4.1"); // unpacked by somebody else
        QVERIFY(log().contains("signed updates only"));
    }

    /// Anybody may lock what they may read, and run what lies in the bundle.
    void waitsForNobodyElse()
    {
        if (geteuid() != 0) {
            QSKIP("NEEDS ROOT: other users were not tried", "");
        }
        shell(QString("chmod a+rx . ; cp /bin/sleep ") + installed("old"));
        QProcess other;
        other.start("setpriv", {"--reuid=65534", "--clear-groups", "bash", "-c",
                                "exec 9<\"$0\"; flock 9; echo; exec \"$1\" 300", m_dir->path(), installed("old")});
        QVERIFY(other.waitForReadyRead());
        QCOMPARE(update(), "0 2.5.0 login Korvan.app started");
        QCOMPARE(other.state(), QProcess::Running);
        other.kill();
        other.waitForFinished();
    }

    /// Killed at the first, second, ... call of each kind that changes something, it leaves one whole version that
    /// starts, and a later update works and clears up.
    void survivesBeingKilled()
    {
        int kills = 0;
        for (const char *call : {"renameat2", "rename", "unlinkat", "mkdir", "chmod", "lchown", "write", "openat",
                                 "flock", "sync", "sendfile", "clone"}) {
            QByteArray outcome = "137";
            for (int n = 1; outcome.startsWith("137"); ++n, ++kills) {
                init();
                outcome = update(QStringLiteral("%1:signal=KILL:when=%2").arg(call).arg(n));
                const QStringList whole = {"137 2.4.1 logi", "137 2.5.0 logi", "0 2.5.0 login "};
                QVERIFY2(whole.contains(outcome.left(14)) && !outcome.contains("broken"), outcome.constData());
                QVERIFY2(n < 200, call);
                if (QByteArray(call).startsWith("rename")) {
                    stage();
                    COMPARE_CASE(call, update(), "0 2.5.0 login Korvan.app started");
                }
            }
        }
        QVERIFY2(kills > 100, "it was hardly ever killed");
    }
};

QTEST_GUILESS_MAIN(Compose9Test)
#include "Compose9Test.moc"
