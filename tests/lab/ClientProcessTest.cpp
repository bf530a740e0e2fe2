#include "tests/lab/ClientLab.h"

#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "common/StateFile.h"
#include "controller/Options.h"

#include <QDir>

/// The program as a process of the lab, by root from the test's folder, or installed and by an ordinary user where
/// the environment says so. It is killed at the latest when this goes.
class ProgramLab : public ClientLab
{
public:
    ProgramLab()
    {
        if (isPersons()) {
            static const QByteArray installed = inHome("$LAB desktop '" KORVAN_BUILD "'");
            QCOMPARE(installed, QByteArray());
            inHome("rm -rf '" + state("") + "'");
        }
    }

    bool starts(const QStringList &arguments)
    {
        if (isPersons()) {
            // All that the test has written is the person's own.
            inHome("s='" + state("") + "'; $LAB as ada mkdir -p $s; cp -r '" + appPath("/cfg") +
                   "' $s; chown -R ada $s");
            qputenv("PERSON_VARIABLES", "QT_QPA_PLATFORM");
            program.start(qEnvironmentVariable("LAB"), QStringList({"start", "installed", "ada"}) + arguments);
        } else {
            program.start(appPath("/Korvan"), arguments);
        }
        return program.waitForStarted();
    }

    static bool isPersons() { return qgetenv("KORVAN_TEST_START") == "person"; }

    /// Where the program keeps a file of its state.
    static QString state(const char *suffix)
    {
        return isPersons() ? qEnvironmentVariable("LAB_DIR") + "/people/ada/.local/share/korvan" + suffix
                           : appPath(suffix);
    }

    /// Whether it ends by itself without a complaint.
    bool ends()
    {
        return program.waitForFinished(60000) && program.exitStatus() == QProcess::NormalExit &&
               program.exitCode() == 0;
    }

    /// Starts the program so that it logs in and connects by itself.
    bool connectsBy(const QStringList &arguments, bool lockDown)
    {
        Options options;
        options.connectOnBoot = true;
        options.noSound = true;
        options.bootServer = "Examplia-1";
        options.protocol = "OpenVPN";
        options.lockDown = lockDown;
        QDir().mkpath(appPath("/cfg"));
        writeSavedLogin({"alice", "wonderland-7"});
        return writeWhole(appPath("/cfg/option"), optionBytes(options)) && starts(arguments) &&
               QTest::qWaitFor([] { return whereabouts() == "198.18.1.2, Examplia"; }, 60000) &&
               QTest::qWaitFor([lockDown] { return hasDefaultRoute() != lockDown; }, 60000);
    }

    QProcess program;
};

/// The program as a process: how it starts by its arguments, ends, and what is left when it is killed.
class ClientProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void hiddenStartAndQuit()
    {
        ProgramLab lab;
        QVERIFY(lab.connectsBy({"-hide"}, true));
        lab.program.terminate();
        QVERIFY(lab.ends() && lab.networkIsAsBefore());
    }

    void killedLeavesANetwork()
    {
        for (const bool boxIsOpen : {false, true}) {
            for (const bool lockDown : {false, true}) {
                ProgramLab lab;
                QVERIFY(lab.connectsBy({}, lockDown));
                if (boxIsOpen) {
                    kill(openVPN(), SIGKILL);
                    QTRY_VERIFY_WITH_TIMEOUT(
                        fileBytes(ProgramLab::state("/log.txt")).contains("[ERROR]openvpn error") &&
                            !hasDefaultRoute(),
                        60000);
                }
                lab.program.kill();
                QVERIFY(lab.networkIsAsBefore());
                QCOMPARE(whereabouts(), QByteArray("198.51.100.2, Homeland"));
            }
        }
    }

    void resetBesideARunningOneSaysSo()
    {
        ProgramLab lab;
        QVERIFY(lab.connectsBy({}, true));
        QProcess reset;
        reset.start(appPath("/Korvan"), {"-reset"});
        QVERIFY(reset.waitForFinished(60000) && reset.exitCode() == 0);
        QVERIFY(reset.readAllStandardOutput().contains("is using Korvan on this computer") && !hasDefaultRoute());
        lab.program.terminate();
        QVERIFY(lab.ends());
    }

    /// Nobody is left to clean up, so it all stays until somebody starts the program.
    void repairsWhatAllTheirDeathsLeft()
    {
        for (const QStringList &arguments : {QStringList("-reset"), QStringList()}) {
            ProgramLab lab;
            QVERIFY(lab.connectsBy({}, true));
            inHome("kill -9 $(pgrep -x network) $(pgrep -x Korvan) $(pgrep -x broker) " +
                   QByteArray::number(openVPN()));
            QVERIFY(lab.program.waitForFinished() && !hasDefaultRoute());
            QFile::remove(appPath("/cfg/option")); // the next start does not connect
            QFile::remove(ProgramLab::state("/cfg/option"));
            if (arguments.isEmpty()) {
                QFile::remove(ProgramLab::state("/defgate")); // the journal alone knows the routes
            }
            QVERIFY(lab.starts(arguments) && lab.networkIsAsBefore());
            QVERIFY(arguments.isEmpty() || lab.ends());
            const QByteArray log = fileBytes(ProgramLab::state("/log.txt"));
            QVERIFY2(arguments.isEmpty() || log.contains("Unload tap driver success."), log.constData());
        }
    }
};

QTEST_MAIN(ClientProcessTest)
#include "ClientProcessTest.moc"
