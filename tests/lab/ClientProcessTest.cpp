#include "tests/lab/ClientLab.h"

#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "common/StateFile.h"
#include "controller/Options.h"
#include "stats/TransferTotals.h"

#include <QDir>
#include <QElapsedTimer>

#include <csignal>
#include <cstdio>

/// The program as a process: how it starts by its arguments, ends, and what is left when it is killed.
class ClientProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void hiddenStartAndQuit();
    void killedLeavesANetwork_data();
    void killedLeavesANetwork();
    void repairsWhatAllTheirDeathsLeft_data();
    void repairsWhatAllTheirDeathsLeft();

private:
    void start(const QStringList &arguments);
    void connectBy(const QStringList &arguments, bool lockDown);
    static bool hasDefaultRoute() { return !inHome("ip route show default").isEmpty(); }

    std::unique_ptr<ClientLab> m_lab;
    QProcess m_program;
    QByteArray m_network;
};

void ClientProcessTest::init()
{
    m_network = networkState();
    m_lab = std::make_unique<ClientLab>();
}

void ClientProcessTest::cleanup()
{
    m_program.kill();
    m_program.waitForFinished();
    m_lab.reset();
}

void ClientProcessTest::start(const QStringList &arguments)
{
    m_program.start(appPath("/Korvan"), arguments);
    QVERIFY(m_program.waitForStarted());
}

/// Starts the program so that it logs in and connects by itself.
void ClientProcessTest::connectBy(const QStringList &arguments, bool lockDown)
{
    QDir().mkpath(appPath("/cfg"));
    writeSavedLogin({"alice", "wonderland-7"});
    Options options;
    options.connectOnBoot = true;
    options.noSound = true;
    options.bootServer = "Examplia-1";
    options.protocol = "OpenVPN";
    options.lockDown = lockDown;
    QVERIFY(writeWhole(appPath("/cfg/option"), optionBytes(options)));
    start(arguments);
    QTRY_COMPARE_WITH_TIMEOUT(whereabouts(), QByteArray("198.18.1.2, Examplia"), 60000);
    QTRY_COMPARE_WITH_TIMEOUT(hasDefaultRoute(), !lockDown, 60000);
}

void ClientProcessTest::hiddenStartAndQuit()
{
    constexpr quint64 kLoaded = 3 << 20;
    connectBy({"-hide"}, true);
    LabWindow::order("/archives/load", "rate=1500000", QByteArray(kLoaded, 'x'));
    inHome("curl -sk -m 30 https://portal.korvan.example/archives/load >/dev/null");
    m_program.terminate();
    QVERIFY(m_program.waitForFinished(60000));
    QCOMPARE(m_program.exitCode(), 0);
    QVERIFY(networkReturnsTo(m_network));
    TransferCounters stored;
    GetTotalDataTransfer(stored.totalReceived, stored.totalSent, stored.day, stored.dayReceived, stored.daySent,
                         stored.month, stored.monthReceived, stored.monthSent);
    std::printf("%llu bytes counted\n", stored.totalReceived);
    QVERIFY2(stored.totalReceived > kLoaded / 2 && stored.totalReceived < 2 * kLoaded,
             "OpenVPN reports every second");
    QCOMPARE(stored.dayReceived, stored.totalReceived);
}

void ClientProcessTest::killedLeavesANetwork_data()
{
    QTest::addColumn<bool>("lockDown");
    QTest::addColumn<bool>("boxIsOpen");
    QTest::newRow("connected") << false << false;
    QTest::newRow("in lock-down") << true << false;
    QTest::newRow("while the kill switch waits for OK") << false << true;
    QTest::newRow("while it waits in lock-down") << true << true;
}

void ClientProcessTest::killedLeavesANetwork()
{
    QFETCH(bool, lockDown);
    QFETCH(bool, boxIsOpen);
    connectBy({}, lockDown);
    if (boxIsOpen) {
        kill(openVPN(), SIGKILL);
        QTRY_VERIFY_WITH_TIMEOUT(fileBytes(appPath("/log.txt")).contains("[ERROR]openvpn error"), 60000);
        QTRY_VERIFY_WITH_TIMEOUT(!hasDefaultRoute(), 60000);
    }
    m_program.kill();
    QElapsedTimer timer;
    timer.start();
    QVERIFY(networkReturnsTo(m_network));
    std::printf("%s: the network was back after %lld ms\n", QTest::currentDataTag(), timer.elapsed());
    QCOMPARE(whereabouts(), QByteArray("198.51.100.2, Homeland"));
}

void ClientProcessTest::repairsWhatAllTheirDeathsLeft_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("-reset") << QStringList("-reset");
    QTest::newRow("the next start") << QStringList();
}

/// Nobody is left to clean up, so it all stays until somebody starts the program.
void ClientProcessTest::repairsWhatAllTheirDeathsLeft()
{
    QFETCH(QStringList, arguments);
    connectBy({}, true);
    inHome("kill -9 $(pgrep -x route) $(pgrep -x Korvan) " + QByteArray::number(openVPN()));
    QVERIFY(m_program.waitForFinished());
    QVERIFY(!hasDefaultRoute());
    QFile::remove(appPath("/cfg/option")); // the next start does not connect
    start(arguments);
    QVERIFY(networkReturnsTo(m_network));
    if (!arguments.isEmpty()) {
        QVERIFY(m_program.waitForFinished(60000));
        QCOMPARE(m_program.exitCode(), 0);
    }
}

int main(int argc, char *argv[])
{
    return runLabTest<ClientProcessTest>(argc, argv);
}
#include "ClientProcessTest.moc"
