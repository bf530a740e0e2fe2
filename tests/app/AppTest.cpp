#include "tests/support/OwnNetwork.h"
#include "tests/support/TestFiles.h"
#include "tests/support/VirtualScreen.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>
#include <unistd.h>

/// The program as a process, from a copy of the bundle, on a screen of the test's own.
class AppTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void versionBox();
    void resetRepairsTheNetwork();
    void windowByArguments_data();
    void windowByArguments();
    void secondStartShowsTheFirst();
    void withoutATrayTheWindowStaysInReach();
    void updateWithoutHelper();
    void updateIsHandedOver();
    void updateHelperThatCanNotStart();
    void updateIsInstalledAndStarted();
    void nothingIsSwappedUnderARunningProgram();
    void otherNamesAreNoUpdate();
    void soundsAreSmallWaves();
    void connectionIsHeard();
    void startWithRootsRightsTrustsNobody_data();
    void startWithRootsRightsTrustsNobody();

private:
    void start(const QStringList &arguments);
    void waitForEnd(int status);
    void quit();
    QString inBundle(const QString &suffix) const { return m_folder->path() + "/Korvan.app/Contents/MacOS" + suffix; }
    QString staging() const { return m_folder->path() + "/update.temp"; }
    QByteArray log() const { return fileBytes(inBundle("/log.txt")); }
    bool startIsDone();

    VirtualScreen m_screen;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QProcess> m_program;
};

void AppTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QDir(m_folder->path()).mkpath("Korvan.app/Contents");
    QProcess::execute("cp", {"-a", KORVAN_BUNDLE, m_folder->path() + "/Korvan.app/Contents/"});
    putFile(inBundle("/setting.ini"), "[UPDATE]\nURL=http://127.0.0.1:1/update.xml\n");
    putScript(inBundle("/down.sh"), ""); // the machine's name servers are not the test's own
}

void AppTest::cleanup()
{
    if (m_program && m_program->state() != QProcess::NotRunning) {
        m_program->kill();
        m_program->waitForFinished();
    }
    m_program.reset();
}

void AppTest::start(const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", m_screen.display());
    environment.remove("QT_QPA_PLATFORM");
    m_program = std::make_unique<QProcess>();
    m_program->setProcessEnvironment(environment);
    m_program->start(inBundle("/Korvan"), arguments);
    QVERIFY(m_program->waitForStarted());
}

void AppTest::waitForEnd(int status)
{
    QVERIFY2(m_program->state() == QProcess::NotRunning || m_program->waitForFinished(60000), log().constData());
    QCOMPARE(m_program->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_program->exitCode(), status);
}

void AppTest::quit()
{
    m_program->terminate();
    waitForEnd(0);
}

/// The update check is the last step of a normal start.
bool AppTest::startIsDone()
{
    return QTest::qWaitFor([this] { return log().contains("[WARNING]Can not load from"); }, 60000);
}

void AppTest::versionBox()
{
    putFile(inBundle("/version"), "7.8.9\n");
    start({"-version"});
    QVERIFY(m_screen.showsWindow("Version"));
    m_screen.pressKey("Version", "Return");
    waitForEnd(0);
    QVERIFY(m_screen.hidesWindow("Korvan"));
}

void AppTest::resetRepairsTheNetwork()
{
    putFile(inBundle("/defgate"), "198.51.100.1");
    putScript(inBundle("/tools/route"), "echo \"route $*\"");
    putScript(inBundle("/tools/netstat"), "");
    putScript(inBundle("/down.sh"), "touch \"$(dirname \"$0\")/down-ran\"");
    start({"-reset"});
    waitForEnd(0);
    QVERIFY2(log().contains("Unload tap driver success."), log().constData());
    QVERIFY(log().contains("route add 0.0.0.0 mask 0.0.0.0 198.51.100.1"));
    QVERIFY(QFile::exists(inBundle("/down-ran")));
    QVERIFY2(!QFile::exists(inBundle("/cfg")), "no window was made");
}

void AppTest::windowByArguments_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("shown");
    QTest::newRow("none") << QStringList() << true;
    QTest::newRow("unknown switch") << QStringList("-x") << true;
    QTest::newRow("-hide") << QStringList("-hide") << false;
    QTest::newRow("two") << QStringList{"-version", "-x"} << false;
}

void AppTest::windowByArguments()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, shown);
    QFile::remove(inBundle("/version")); // a missing one is no error
    start(arguments);
    QVERIFY(startIsDone());
    QVERIFY(shown ? m_screen.showsWindow("Korvan") : m_screen.hidesWindow("Korvan"));
    quit();
}

void AppTest::secondStartShowsTheFirst()
{
    start({"-hide"});
    QVERIFY(startIsDone());
    putFile(inBundle("/update/update.zip"), "PK");
    QProcess second;
    second.setProcessEnvironment(m_program->processEnvironment());
    second.start(inBundle("/Korvan"), QStringList());
    QVERIFY(second.waitForFinished(60000));
    QCOMPARE(second.exitCode(), 0);
    QVERIFY(m_screen.showsWindow("Korvan"));
    QVERIFY(QFile::exists(inBundle("/update/update.zip")));
    quit();
}

void AppTest::withoutATrayTheWindowStaysInReach()
{
    VirtualScreen bare;
    bare.endTray();
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", bare.display());
    environment.remove("QT_QPA_PLATFORM");
    program.setProcessEnvironment(environment);
    program.start(inBundle("/Korvan"), {"-hide"});
    QVERIFY(startIsDone());
    QVERIFY(bare.hasMinimised("Korvan"));
    program.terminate();
    QVERIFY(program.waitForFinished(30000));
}

void AppTest::updateWithoutHelper()
{
    putFile(inBundle("/update/update.zip"), "PK");
    QFile::remove(inBundle("/compose9"));
    start({"-version"}); // the update goes first
    waitForEnd(-188 & 0xff);
    QVERIFY(log().contains("compose9 is missed, update failed."));
    QVERIFY(QFile::exists(inBundle("/update/update.zip")));
    QVERIFY(!QDir(staging()).exists());
}

void AppTest::updateIsHandedOver()
{
    putFile(inBundle("/update/update.zip"), "an archive");
    putScript(inBundle("/compose9"),
              "printf '%s\\n' \"$@\" \"$KORVAN_RESTART_ARGUMENT\" > '" + m_folder->path().toUtf8() + "/called'");
    putScript(inBundle("/compose7"), "cp \"$2\" \"$4/unpacked\"");
    start({"-hide"});
    waitForEnd(188);
    QTRY_COMPARE(fileBytes(m_folder->path() + "/called"), staging().toUtf8() + "/\nKorvan\n-hide\n");
    QVERIFY(!QFile::exists(inBundle("/update/update.zip")));
    QVERIFY(!QFile::exists(inBundle("/compose9")));
    QCOMPARE(fileBytes(staging() + "/unpacked"), QByteArray("an archive"));

    start({}); // the next normal start clears up
    QVERIFY(startIsDone());
    QVERIFY(!QDir(staging()).exists());
    QVERIFY(QFile::exists(inBundle("/compose9")));
    quit();
}

void AppTest::updateHelperThatCanNotStart()
{
    putFile(inBundle("/update/update.zip"), "an archive");
    putFile(inBundle("/compose9"), "not a program");
    QVERIFY(QFile::setPermissions(inBundle("/compose9"), QFile::ReadOwner | QFile::WriteOwner));
    start({});
    QVERIFY(m_screen.showsWindow("Error"));
    m_screen.pressKey("Error", "Return");
    waitForEnd(188);
    QVERIFY(QFile::exists(staging() + "/update.zip"));
}

/// The real helpers and a real archive.
void AppTest::updateIsInstalledAndStarted()
{
    const QString archive = inBundle("/update/update.zip");
    const QString script = KORVAN_SOURCE "/scripts/make-update.sh";
    QCOMPARE(QProcess::execute(script, {KORVAN_BUILD, archive, "98.7.6"}), 0);
    putFile(inBundle("/cfg/OpenVPN/kept"), "kept");
    start({"-hide"});
    waitForEnd(188);
    QVERIFY2(startIsDone(), log().constData());
    QVERIFY2(log().contains(" to 98.7.6\r\n"), log().constData());
    QCOMPARE(fileBytes(inBundle("/version")), QByteArray("98.7.6"));
    QCOMPARE(fileBytes(inBundle("/cfg/OpenVPN/kept")), QByteArray("kept"));
    QVERIFY(m_screen.hidesWindow("Korvan"));
    QTRY_COMPARE_WITH_TIMEOUT(
        QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList("Korvan.app"), 30000);
    for (const QString &process : QDir("/proc").entryList(QDir::Dirs)) {
        if (QFile::symLinkTarget("/proc/" + process + "/exe") == inBundle("/Korvan")) {
            kill(process.toInt(), SIGTERM);
        }
    }
}

void AppTest::nothingIsSwappedUnderARunningProgram()
{
    start({});
    QVERIFY(startIsDone());
    putFile(inBundle("/update/update.zip"), "PK");
    QProcess reset;
    reset.setProcessEnvironment(m_program->processEnvironment());
    reset.start(inBundle("/Korvan"), {"-reset"});
    QVERIFY(reset.waitForFinished(60000));
    QCOMPARE(reset.exitCode(), 0);
    QVERIFY(QFile::exists(inBundle("/update/update.zip")));
    quit();
}

void AppTest::otherNamesAreNoUpdate()
{
    putFile(inBundle("/update/Update.zip"), "PK");
    QDir().mkpath(inBundle("/update/sub"));
    putFile(inBundle("/log"), "an old second log");
    start({"-reset"});
    waitForEnd(0);
    QVERIFY(QFile::exists(inBundle("/update/Update.zip")));
    QVERIFY(!QFile::exists(inBundle("/log")));
}

void AppTest::soundsAreSmallWaves()
{
    const QByteArray connect = fileBytes(inBundle("/snd/connect.wav"));
    const QByteArray disconnect = fileBytes(inBundle("/snd/disconnect.wav"));
    for (const QByteArray &sound : {connect, disconnect}) {
        QVERIFY(sound.startsWith("RIFF") && sound.mid(8, 4) == "WAVE");
        QVERIFY(sound.size() < 100 * 1024);
    }
    QVERIFY(connect != disconnect);
}

/// Looks for something louder than silence in a recording of 16-bit samples.
static bool isLoud(const QByteArray &recording)
{
    for (int i = 1; i < recording.size(); i += 2) {
        if (qAbs(int(recording.at(i))) > 4) { // the high byte
            return true;
        }
    }
    return false;
}

/// A connection at start, through a stand-in for OpenVPN, with a sound server whose only device records.
void AppTest::connectionIsHeard()
{
    const QString socket = m_folder->path() + "/sound";
    QProcess server;
    server.start("pulseaudio",
                 {"-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "-L", "module-null-sink", "-L",
                  "module-native-protocol-unix auth-anonymous=1 socket=" + socket});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(socket), 30000);
    qputenv("PULSE_SERVER", "unix:" + socket.toUtf8());
    QProcess recorder;
    recorder.start("parec", {"--raw", "--device=@DEFAULT_MONITOR@"});
    QVERIFY(recorder.waitForReadyRead(30000));

    putScript(inBundle("/compose"), "echo 'Initialization Sequence Completed'; exec sleep 60");
    putFile(inBundle("/cfg/OpenVPN/Examplia-1.ovpn"), "client\nremote 203.0.113.21 1194\n");
    putFile(inBundle("/cfg/OpenVPN/alice.crt"), "Not After : Dec 31 23:59:59 2099 GMT\n");
    QFile::copy(QStringLiteral(PREPARE_STATE), inBundle("/prepare_state"));
    QCOMPARE(QProcess::execute(inBundle("/prepare_state"), {"alice", "secret", "Examplia-1"}), 0);
    start({});
    QVERIFY(startIsDone());
    QByteArray recording;
    QTRY_VERIFY_WITH_TIMEOUT(isLoud(recording += recorder.readAllStandardOutput()), 30000);
    quit();
    qunsetenv("PULSE_SERVER");
    recorder.kill();
    recorder.waitForFinished();
    server.terminate();
    server.waitForFinished();
}

void AppTest::startWithRootsRightsTrustsNobody_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QStringList>("starter");
    const QStringList asNobody{"setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups", "env", "-i"};
    QTest::newRow("set-user-id") << "4755" << asNobody;
    QTest::newRow("pkexec") << "755" << QStringList{"env", "-i", "PKEXEC_UID=65534"};
}

/// An ordinary user starts a copy that runs as root, with an environment and arguments that would load code.
void AppTest::startWithRootsRightsTrustsNobody()
{
    if (geteuid() != 0) {
        QSKIP("NEEDS ROOT: the start with root's rights was not tested", "");
    }
    QFETCH(QString, mode);
    QFETCH(QStringList, starter);
    const QString program = inBundle("/Korvan");
    QProcess::execute("chmod", {"755", m_folder->path()});
    QProcess::execute("chmod", {mode, program});
    const QString hostile = m_folder->path() + "/hostile";
    const QString marker = m_folder->path() + "/loaded";
    QDir().mkpath(hostile + "/generic");
    QFile::copy(QStringLiteral(HOSTILE_PLUGIN), hostile + "/generic/libhostile.so");
    QFile::copy(QStringLiteral(PLAIN_QT_PROGRAM), hostile + "/plain");
    putScript(hostile + "/netstat", "touch '" + marker.toUtf8() + "'");
    putFile(hostile + "/QtProject/qtlogging.ini", "[Rules]\n");
    QProcess::execute("chmod", {"-R", "a+rX", hostile});
    putScript(inBundle("/tools/netstat"), "env > '" + inBundle("/environment").toUtf8() + "'; id -u -r >> '" +
                                              inBundle("/environment").toUtf8() + "'");

    const QStringList environment = {"DISPLAY=" + m_screen.display(),
                                     "LANG=C.UTF-8",
                                     "TZ=:/etc/shadow",
                                     "PATH=" + hostile + ":/usr/bin:/bin",
                                     "QT_PLUGIN_PATH=" + hostile,
                                     "QT_QPA_GENERIC_PLUGINS=hostile",
                                     "QT_QPA_PLATFORM_PLUGIN_PATH=" + hostile,
                                     "QT_LOGGING_CONF=/etc/shadow",
                                     "XDG_CONFIG_HOME=" + hostile,
                                     "OPENSSL_CONF=" + hostile + "/openssl.cnf"};
    const auto startAsNobody = [&](const QString &what, const QStringList &arguments) {
        m_program = std::make_unique<QProcess>();
        m_program->start(starter.first(), starter.mid(1) + environment + QStringList{what} + arguments);
        QVERIFY(m_program->waitForStarted());
    };
    // The plug-in does load in a program that is not on its guard.
    startAsNobody(hostile + "/plain", {});
    QVERIFY(m_program->waitForFinished(30000));
    QVERIFY2(m_program->exitCode() == 42, "the hostile plug-in shows itself where it is let in");

    startAsNobody(program, {"-platformpluginpath", hostile});
    QVERIFY(startIsDone());
    QVERIFY2(!QFile::exists(marker), "neither the plug-in nor the tool of the user's ran");
    const QByteArray seen = "\n" + fileBytes(inBundle("/environment"));
    QVERIFY2(seen.endsWith("\n0\n"), "root for good, or bash would drop it");
    QVERIFY(seen.contains("\nUSER=nobody\n"));
    for (const char *name : {"QT_", "XDG_", "OPENSSL_CONF", "TZ=", "HOSTILE", "hostile", "PKEXEC"}) {
        QVERIFY2(!seen.contains(name), seen.constData());
    }
    quit();
}

int main(int argc, char *argv[])
{
    enterOwnNetwork();
    QCoreApplication application(argc, argv);
    AppTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "AppTest.moc"
