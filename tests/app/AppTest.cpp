#include "tests/support/Desktop.h"
#include "tests/support/OwnNetwork.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QUdpSocket>

#include <memory>
#include <sys/mount.h>
#include <unistd.h>

/// The program as a process, from a copy of the bundle, on a screen of its own. Where the environment says so it is
/// started by an ordinary user, whose state is then in a folder of that user's.
class AppTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QDir(m_folder->path()).mkpath("Korvan.app/Contents");
        QProcess::execute("cp", {"-a", KORVAN_BUNDLE, m_folder->path() + "/Korvan.app/Contents/"});
        putFile(inBundle("/setting.ini"), "[UPDATE]\nURL=http://127.0.0.1:1/update.xml\n");
        putScript(inBundle("/down.sh"), ""); // the machine's name servers are not the test's own
        if (isPersons()) {
            makeHome();
        }
    }

    void cleanup() { m_program.reset(); } // kills it

    void versionBox()
    {
        putFile(inBundle("/version"), "7.8.9\n");
        start({"-version"});
        QCOMPARE(confirm("Version"), 0);
        QVERIFY(desktop::hidesWindow("Korvan"));
    }

    /// The desktop's, unless the person has chosen one.
    void language()
    {
        for (const auto &[chosen, title] : {std::pair("", "Versi[^o].*n"), {"en", "Version"}}) {
            putFile(inState("/cfg/language"), chosen);
            qputenv("LC_ALL", "es_ES.UTF-8");
            start({"-version"});
            qputenv("LC_ALL", "C.UTF-8"); // for the tools of the test
            QCOMPARE(confirm(title), 0);
        }
    }

    void windowByArguments()
    {
        QFile::remove(inBundle("/version")); // a missing one is no error
        for (const QStringList &arguments : {QStringList(), {"-x"}, {"-version", "-x"}}) {
            start(arguments);
            QVERIFY(startIsDone());
            QVERIFY(arguments.size() < 2 ? desktop::showsWindow("Korvan") : desktop::hidesWindow("Korvan"));
            QCOMPARE(quit(), 0);
        }
    }

    /// And nothing is swapped under a running program.
    void secondStartShowsTheFirst()
    {
        start({"-hide"});
        QVERIFY(startIsDone());
        putFile(inState("/update/update.zip"), "PK");
        QVERIFY(desktop::hidesWindow("Korvan"));
        QProcess second;
        run(second, {});
        QCOMPARE(statusOf(second), 0);
        QVERIFY(desktop::showsWindow("Korvan"));
        QVERIFY(QFile::exists(inState("/update/update.zip")));
        QCOMPARE(quit(), 0);
    }

    void updateWithoutHelper()
    {
        putFile(inBundle("/update/update.zip"), "PK");
        QFile::remove(inBundle("/compose9"));
        start({"-version"});
        QCOMPARE(statusOf(*m_program), -188 & 0xff); // the update goes first
        QVERIFY(log().contains("compose9 is missed, update failed."));
        QVERIFY(QFile::exists(inBundle("/update/update.zip")) && !QDir(staging()).exists());
    }

    void updateHelperThatCanNotStart()
    {
        putFile(inBundle("/update/update.zip"), "an archive");
        QVERIFY(QFile::setPermissions(inBundle("/compose9"), QFile::ReadOwner));
        start({});
        QCOMPARE(confirm("Error"), 188);
        QVERIFY(QFile::exists(staging() + "/update.zip") && !QFile::exists(inBundle("/compose9")));
        start({}); // the next normal start clears up
        QVERIFY(startIsDone());
        QVERIFY(!QDir(staging()).exists() && QFile::exists(inBundle("/compose9")));
        QCOMPARE(quit(), 0);
    }

    /// The real helpers and a real archive.
    void updateIsInstalledAndStarted()
    {
        const QString archive = inBundle("/update/update.zip");
        QCOMPARE(QProcess::execute(KORVAN_SOURCE "/scripts/make-update.sh", {KORVAN_BUILD, archive, "98.7.6"}), 0);
        putFile(inBundle("/cfg/OpenVPN/kept"), "kept");
        start({"-hide"});
        QCOMPARE(statusOf(*m_program), 188);
        QVERIFY(startIsDone());
        QVERIFY2(log().contains(" to 98.7.6\r\n"), log().constData());
        QCOMPARE(fileBytes(inBundle("/version")), QByteArray("98.7.6"));
        QCOMPARE(fileBytes(inBundle("/cfg/OpenVPN/kept")), QByteArray("kept"));
        QVERIFY(desktop::hidesWindow("Korvan"));
        QTRY_COMPARE_WITH_TIMEOUT(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                                  QStringList("Korvan.app"), 30000);
        endRestarted();
    }

    /// The reason reaches the person, who would go on with the old version unaware.
    void failedUpdateIsTold()
    {
        putFile(inBundle("/update/update.zip"), "PK");
        start({});
        QCOMPARE(statusOf(*m_program), 188);
        QVERIFY(desktop::showsWindow("Update"));
        QVERIFY2(log().contains("[ERROR]Update failed: the archive has no Korvan.app"), log().constData());
        QVERIFY(startIsDone()); // the box holds nothing up
        endRestarted();
    }

    /// The same where the program has keys: a right signature, and an archive that was changed after it was checked.
    void signedUpdateIsInstalled()
    {
        const QString archive = inBundle("/update/update.zip");
        const QString key = KORVAN_BUILD "/lab/update.key";
        putFile(inBundle("/update-keys"), fileBytes(KORVAN_BUILD "/lab/update.pub").split('\n').at(1));
        for (const bool good : {false, true}) {
            QCOMPARE(QProcess::execute(KORVAN_SOURCE "/scripts/make-update.sh",
                                       {"--sign", key, KORVAN_BUILD, archive, "98.7.6"}),
                     0);
            if (!good) {
                putFile(archive, fileBytes(archive) + ' ');
            }
            start({"-version"});
            if (!good) {
                QVERIFY(desktop::showsWindow("Update"));
                QVERIFY2(log().contains("Update failed, its signature is not right."), log().constData());
                desktop::pressKey("Update", "Return");
                QCOMPARE(confirm("Version"), 0); // the old program runs
                QVERIFY(!QDir(inBundle("/update")).exists());
            }
        }
        QCOMPARE(statusOf(*m_program), 188);
        QTRY_COMPARE_WITH_TIMEOUT(fileBytes(inBundle("/version")), QByteArray("98.7.6"), 30000);
        QVERIFY(desktop::showsWindow("Version"));
        desktop::pressKey("Version", "Return");
        QTRY_COMPARE_WITH_TIMEOUT(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                                  QStringList("Korvan.app"), 30000);
        QVERIFY2(log().contains(" to 98.7.6\r\n"), log().constData());
    }

    /// Nobody could close a box there.
    void resetWithoutAScreenWhileARefusedUpdateWaits()
    {
        putFile(inBundle("/update-keys"), fileBytes(KORVAN_BUILD "/lab/update.pub").split('\n').at(1));
        putFile(inState("/update/update.zip"), "PK");
        putFile(inState("/update/update.zip.minisig"), {});
        qputenv("QT_QPA_PLATFORM", "offscreen");
        start({"-reset"});
        qunsetenv("QT_QPA_PLATFORM");
        QCOMPARE(statusOf(*m_program), 0);
        QVERIFY2(log().contains("[ERROR]Update failed, it is not signed."), log().constData());
        QVERIFY(!QDir(inState("/update")).exists());
    }

    /// Its resolver would ask for ten seconds.
    void quitWhileANameServerIsSilent()
    {
        if (geteuid() != 0) {
            QSKIP("NEEDS ROOT: the end with a silent name server was not tested", "");
        }
        QUdpSocket nameServer;
        QVERIFY(nameServer.bind(QHostAddress::LocalHost, 53));
        putFile(m_folder->path() + "/resolv.conf", "nameserver 127.0.0.1\n");
        const QByteArray file = QFile::encodeName(m_folder->path() + "/resolv.conf");
        QCOMPARE(mount(file.constData(), "/etc/resolv.conf", nullptr, MS_BIND, nullptr), 0);
        putFile(inBundle("/setting.ini"), "[UPDATE]\nURL=http://silent.example/update.xml\n");
        start({});
        const bool asked = nameServer.waitForReadyRead(60000);
        m_program->terminate();
        const bool ended = m_program->waitForFinished(3000);
        umount("/etc/resolv.conf");
        QVERIFY(asked && ended);
        QCOMPARE(statusOf(*m_program), 0);
    }

    /// A connection at start, through a stand-in for OpenVPN, with a sound server whose only device records.
    void connectionIsHeard()
    {
        const QString socket = m_folder->path() + "/sound";
        QProcess server;
        server.start("pulseaudio",
                     {"-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "-L", "module-null-sink",
                      "-L", "module-native-protocol-unix auth-anonymous=1 socket=" + socket});
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(socket), 30000);
        QProcess recorder;
        recorder.start("parec", {"--raw", "--device=@DEFAULT_MONITOR@", "--server=unix:" + socket});
        QVERIFY(recorder.waitForReadyRead(30000));

        putScript(inBundle("/compose"), "echo 'Initialization Sequence Completed'; exec sleep 60");
        putFile(inBundle("/cfg/OpenVPN/Examplia-1.ovpn"), "client\nremote 203.0.113.21 1194\n");
        putFile(inBundle("/cfg/OpenVPN/alice.crt"), "Not After : Dec 31 23:59:59 2099 GMT\n");
        QFile::copy(QStringLiteral(PREPARE_STATE), inBundle("/prepare_state"));
        QCOMPARE(QProcess::execute(inBundle("/prepare_state"), {"alice", "secret", "Examplia-1"}), 0);
        start({});
        QByteArray recording;
        const auto soundingBytes = [&] {
            recording += recorder.readAllStandardOutput();
            return recording.size() - recording.count('\0');
        };
        QTRY_VERIFY_WITH_TIMEOUT(soundingBytes() > 10000, 60000); // a tenth of a second at the least
        QCOMPARE(quit(), 0);
        server.terminate();
        server.waitForFinished();
    }

    /// Others can change what is below /tmp: the bit gives no rights, and the window is the real user's own.
    void setUserIdBitThatIsNotTrusted()
    {
        if (geteuid() != 0) {
            QSKIP("NEEDS ROOT: the start from a set-user-id file was not tested", "");
        }
        makeHome();
        QProcess::execute("chmod", {"4755", inBundle("/Korvan")});
        m_program = std::make_unique<QProcess>();
        m_program->start("setpriv",
                         {"--reuid=nobody", "--regid=nogroup", "--clear-groups", "env", "-i", "LANG=C.UTF-8",
                          "DISPLAY=" + qEnvironmentVariable("DISPLAY"), "HOME=" + home(), inBundle("/Korvan")});
        const QString state = home() + "/.local/share/korvan";
        QTRY_VERIFY_WITH_TIMEOUT(fileBytes(state + "/log.txt").contains("[WARNING]Can not load from"), 60000);
        const QByteArray status = fileBytes(QStringLiteral("/proc/%1/status").arg(m_program->processId()));
        for (const char *line : {"\nUid:\t65534\t65534\t65534\t65534\n", "\nGid:\t65534\t65534\t65534\t65534\n",
                                 "\nGroups:\t \n", "\nCapPrm:\t0000000000000000\n"}) {
            QVERIFY2(status.contains(line), status.constData());
        }
        QVERIFY(fileBytes(state + "/log.txt").contains("[ERROR]Secure failed, you must run me as root"));
        QVERIFY(!QFile::exists(inBundle("/log.txt")) && !QFile::exists(inBundle("/cfg")));
        QVERIFY(!(QFile::permissions(state) & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther)));
        QCOMPARE(quit(), 0);
    }

    /// The last test, because no tray comes back.
    void withoutATrayTheWindowStaysInReach()
    {
        desktop::endTray();
        start({"-hide"});
        QVERIFY(startIsDone());
        QTRY_VERIFY_WITH_TIMEOUT(desktop::hasMinimised("Korvan"), 30000);
        QCOMPARE(quit(), 0);
    }

private:
    void start(const QStringList &arguments)
    {
        QFile::remove(inState("/log.txt"));
        qputenv("PULSE_SERVER", "unix:" + QFile::encodeName(m_folder->path()) + "/sound");
        m_program = std::make_unique<QProcess>();
        run(*m_program, arguments);
    }

    void run(QProcess &program, const QStringList &arguments) const
    {
        if (isPersons()) {
            QProcess::execute("chown", {"-R", "nobody", home()});
            program.start("setpriv", QStringList({"--reuid=nobody", "--regid=nogroup", "--clear-groups", "env",
                                                  "HOME=" + home(), "XDG_DATA_HOME=", inBundle("/Korvan")}) +
                                         arguments);
        } else {
            program.start(inBundle("/Korvan"), arguments);
        }
    }

    /// A folder of an ordinary user's, who may read the bundle.
    void makeHome() const
    {
        QDir().mkpath(home());
        QProcess::execute("chmod", {"-R", "a+rX", m_folder->path()});
        QProcess::execute("chown", {"nobody", home()});
    }
    QString home() const { return m_folder->path() + "/home"; }
    static bool isPersons() { return qgetenv("KORVAN_TEST_START") == "person"; }

    /// The update check is the last step of a normal start.
    bool startIsDone()
    {
        return QTest::qWaitFor([this] { return log().contains("[WARNING]Can not load from"); }, 60000);
    }

    /// The exit status; -1 when the program crashes or does not end.
    static int statusOf(QProcess &program)
    {
        const bool ended = program.state() == QProcess::NotRunning || program.waitForFinished(60000);
        return ended && program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1;
    }
    int quit()
    {
        m_program->terminate();
        return statusOf(*m_program);
    }

    /// Ends the program that an update has started again.
    void endRestarted() const
    {
        QProcess::execute("bash", {"-c", "for exe in /proc/[0-9]*/exe; do [ $exe -ef '" + inBundle("/Korvan") +
                                             "' ] && kill $(cut -d/ -f3 <<<$exe); done"});
    }

    /// Presses Return in the box until the program ends: a window that has just come up may miss a key.
    int confirm(const QString &box)
    {
        while (m_program->state() != QProcess::NotRunning && desktop::showsWindow(box)) {
            desktop::pressKey(box, "Return");
            m_program->waitForFinished(1000);
        }
        return statusOf(*m_program);
    }

    QString inBundle(const QString &suffix) const { return m_folder->path() + "/Korvan.app/Contents/MacOS" + suffix; }
    QString staging() const { return m_folder->path() + "/update.temp"; }
    QString inState(const QString &suffix) const
    {
        return isPersons() ? home() + "/.local/share/korvan" + suffix : inBundle(suffix);
    }
    QByteArray log() const { return fileBytes(inState("/log.txt")); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QProcess> m_program;
};

int main(int argc, char *argv[])
{
    enterOwnNetwork();
    QCoreApplication application(argc, argv);
    AppTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "AppTest.moc"
