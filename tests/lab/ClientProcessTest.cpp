#include "tests/lab/ClientLab.h"

#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "common/StateFile.h"
#include "controller/Options.h"

#include <QDir>

/// The program as a process of the lab. It is killed at the latest when this goes.
class ProgramLab : public ClientLab
{
public:
    bool starts(const QStringList &arguments)
    {
        program.start(appPath("/Korvan"), arguments);
        return program.waitForStarted();
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
                        fileBytes(appPath("/log.txt")).contains("[ERROR]openvpn error") && !hasDefaultRoute(), 60000);
                }
                lab.program.kill();
                QVERIFY(lab.networkIsAsBefore());
                QCOMPARE(whereabouts(), QByteArray("198.51.100.2, Homeland"));
            }
        }
    }

    /// Nobody is left to clean up, so it all stays until somebody starts the program.
    void repairsWhatAllTheirDeathsLeft()
    {
        for (const QStringList &arguments : {QStringList("-reset"), QStringList()}) {
            ProgramLab lab;
            QVERIFY(lab.connectsBy({}, true));
            inHome("kill -9 $(pgrep -x network) $(pgrep -x Korvan) " + QByteArray::number(openVPN()));
            QVERIFY(lab.program.waitForFinished() && !hasDefaultRoute());
            QFile::remove(appPath("/cfg/option")); // the next start does not connect
            if (arguments.isEmpty()) {
                QFile::remove(appPath("/defgate")); // the journal alone knows the routes
            }
            QVERIFY(lab.starts(arguments) && lab.networkIsAsBefore());
            QVERIFY(arguments.isEmpty() || lab.ends());
            const QByteArray log = fileBytes(appPath("/log.txt"));
            QVERIFY2(arguments.isEmpty() || log.contains("Unload tap driver success."), log.constData());
        }
    }
};

QTEST_MAIN(ClientProcessTest)
#include "ClientProcessTest.moc"
