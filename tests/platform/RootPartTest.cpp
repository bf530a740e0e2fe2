#include "platform/RootPart.h"
#include "common/AppPath.h"
#include "tests/support/TestFiles.h"
#include "vpn/VPNClient.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <unistd.h>

/// An ordinary user's program, whose root part takes its time, as while polkit asks a person.
class RootPartTest : public QObject
{
    Q_OBJECT

private slots:
    /// A connection that is given up meanwhile does not come up when the rights do.
    void closedWhileAsked()
    {
        int ends[2];
        QCOMPARE(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends), 0);
        takeRootPart(ends[0]);
        VPNClient client;
        QTimer::singleShot(100, &client, [&client] { client.close(); });
        QTimer::singleShot(300, &client, [&ends] { QCOMPARE(write(ends[1], "ready", 5), ssize_t(5)); });
        QElapsedTimer elapsed;
        elapsed.start();
        QVERIFY(!client.open({VPNClient::OPENVPN, {}, {}, {}, {}, -1, {}, {}, {}}));
        QVERIFY(elapsed.elapsed() >= 250 && hasRoot());
        QVERIFY(!client.isRunning() && client.state() == VPNClient::DISCONNECTED);
        close(ends[1]);
    }

    /// Nor does the end of the program wait for the person's answer.
    void quitWhileAsked()
    {
        QTimer::singleShot(300, qApp, &QCoreApplication::quit);
        QElapsedTimer elapsed;
        elapsed.start();
        bool isRoot = true;
        QTimer::singleShot(0, qApp, [&isRoot] { isRoot = askForRoot().isEmpty(); });
        QCoreApplication::exec();
        QVERIFY(!isRoot && elapsed.elapsed() >= 250 && elapsed.elapsed() < 5000);
    }
};

int main(int argc, char **argv)
{
    static const char kPlace[] = "/mnt/root_part_test"; // in a folder that is root's alone, up to the top
    QCoreApplication application(argc, argv);
    if (QCoreApplication::applicationFilePath() != kPlace) {
        const QByteArray folder = QFile::encodeName(appPath({}));
        putScript(appPath("/broker"), {});
        putScript(appPath("/compose"), {});
        putScript(appPath("/pkexec"), "exec sleep 60");
        if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount((folder + "/pkexec").constData(), "/usr/bin/pkexec", nullptr, MS_BIND, nullptr) != 0 ||
            mount(folder.constData(), "/mnt", nullptr, MS_BIND, nullptr) != 0 ||
            setresuid(65534, 65534, 65534) != 0) {
            std::puts("SKIPPED WHOLE TEST: it needs root, for an ordinary user's start of root's program");
            return 0;
        }
        execv(kPlace, argv);
        return 1;
    }
    RootPartTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "RootPartTest.moc"
