#include "attack/Answers.h"
#include "attack/RawService.h"
#include "common/AppPath.h"
#include "tests/lab/ClientLab.h"

#include <QDir>
#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QRegularExpression>
#include <QTableWidget>

#include <cstdio>

static constexpr quint16 kPort = 8099;
static constexpr quint16 kSpeedTestPort = 8080;
static constexpr qint64 kFrozenMs = 100;
static constexpr int kHeldMB = 400;

/// For how long this thread was ready to run and got no processor, in milliseconds: other programs' doing.
static qint64 waitedForProcessor()
{
    constexpr qint64 perMs = 1000000;
    return fileBytes("/proc/thread-self/schedstat").split(' ').value(1).toLongLong() / perMs;
}

/// How long the window was dead at the most, in milliseconds, busy or blocked.
class Heartbeat : public QObject
{
public:
    Heartbeat()
    {
        m_clock.start();
        startTimer(5, Qt::PreciseTimer);
    }
    qint64 longest = 0;

protected:
    void timerEvent(QTimerEvent * /*event*/) override
    {
        const qint64 waited = waitedForProcessor();
        longest = qMax(longest, m_clock.restart() - (waited - m_waited));
        m_waited = waited;
    }

private:
    QElapsedTimer m_clock;
    qint64 m_waited = waitedForProcessor();
};

/// The most memory that this process had since its record was reset, in MB.
static int mostMemory()
{
    const QString status = QString::fromLatin1(fileBytes("/proc/self/status"));
    return QRegularExpression("VmHWM:\\s*(\\d+)").match(status).captured(1).toInt() / 1024;
}

/// What a hostile service comes to, one row an answer.
class ServiceAttack : public QObject
{
    Q_OBJECT

private slots:
    void answers()
    {
        std::puts("answer | seen | left | MB | s | frozen ms");
        int bad = 0;
        for (const Answer &answer : hostileAnswers()) {
            if (QByteArray(answer.name).contains(qgetenv("ATTACK_ROW"))) {
                bad += row(answer) ? 0 : 1;
            }
        }
        std::printf("%d rows that should not be\n", bad);
        QCOMPARE(bad, 0);
    }

private:
    /// Gives the answer, prints what came of it and returns whether that is harmless.
    static bool row(const Answer &answer)
    {
        ClientLab lab;
        serve("/nothing", {}, {});
        inHome("rm -rf /run/victim /run/owned; mkdir /run/victim; mkfifo /run/victim/fifo");
        inHome("tail -1 " KORVAN_BUILD "/lab/update.pub >'" + appPath("/update-keys") + "'");
        const QByteArray origin = "http://127.0.0.1:" + QByteArray::number(kPort);
        putFile(appPath("/setting.ini"),
                "[LOGIN]\nVER=" + origin + "/api\n[UPDATE]\nURL=" + origin + "/update.xml\n");
        lab.start();
        QObject *window = lab.find("centralwidget")->window();
        if (answer.question == Question::Archive) {
            serve("/update.xml", offer(origin), {});
            QMetaObject::invokeMethod(window, "onInit");
            lab.boxes.takeFailures();
        }
        static const QMap<Question, QByteArray> paths = {{Question::Login, "/api"},
                                                         {Question::Description, "/update.xml"},
                                                         {Question::Archive, "/archive.zip"},
                                                         {Question::IpPage, "/testip.php"},
                                                         {Question::SpeedTest, "/korvantest.dat"}};
        serve(paths[answer.question], answer.bytes, answer.more);
        putFile("/proc/self/clear_refs", "5");
        const int before = mostMemory();
        QElapsedTimer clock;
        clock.start();
        Heartbeat heart;
        if (answer.question == Question::Login) {
            lab.login();
        } else if (answer.question == Question::Archive) {
            lab.find<QAbstractButton>("pbUpApp")->click();
        } else if (answer.question == Question::Description) {
            QMetaObject::invokeMethod(window, "onInit");
            lab.find<QAbstractButton>("pbUpApp")->click();
        } else if (answer.question == Question::SpeedTest) {
            testSpeed(lab);
        } else {
            askForIpPage(*window);
        }
        QTest::qWait(50);
        return report(answer, lab, mostMemory() - before, clock.elapsed(), heart.longest);
    }

    /// The window waits for no such page. Its address is the build's, so that a proxy answers in its place.
    static void askForIpPage(QObject &window)
    {
        QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, "127.0.0.1", kPort});
        QMetaObject::invokeMethod(&window, "onDisconnect");
        QTest::qWait(5000);
        QMetaObject::invokeMethod(&window, "onDisconnect");
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    }

    /// Of a server on this machine; canceled after a while.
    static void testSpeed(const ClientLab &lab)
    {
        putFile(appPath("/cfg/OpenVPN/S.ovpn"), "remote 127.0.0.1 1194\n");
        lab.press("pbExist");
        lab.find<QTableWidget>("tbPing")->setCurrentCell(0, 0);
        QTimer::singleShot(3000, &lab.boxes, [&lab] { lab.press("pbTestCancel"); });
        lab.press("pbSpeedTest");
    }

    static QByteArray offer(const QByteArray &origin)
    {
        const QByteArray entry = "<update><system>macos</system><version>99</version><url>" + origin +
                                 "/archive.zip</url><message>99</message></update>";
        return "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(entry.size()) + "\r\n\r\n" + entry;
    }

    static void serve(const QByteArray &path, const QByteArray &bytes, const QByteArray &more)
    {
        putFile("only", path);
        putFile("answer", bytes);
        putFile("more", more);
    }

    static bool report(const Answer &answer, ClientLab &lab, int memory, qint64 ms, qint64 frozen)
    {
        QString seen = lab.boxes.takeFailures();
        seen.remove(QRegularExpression(" \\(buttons 400\\)|expected: none")).replace('\n', ' ');
        const auto *notice = lab.find("centralwidget")->findChild<QLabel *>("lbNotice");
        if (notice != nullptr && notice->isVisible()) {
            seen += "notice: " + notice->text();
        }
        seen = seen.simplified();
        const QByteArray left = inHome("cd '" + appPath("/") +
                                       "'; echo $(ls -d cfg/OpenVPN/*.ovpn 2>/dev/null | wc -l) "
                                       "servers, $(find update update.new -type f 2>/dev/null | wc -l) of an update");
        const bool harmed = inHome("ls /run/victim") != "fifo" || QFile::exists("/run/owned");
        const bool bad = harmed || frozen > kFrozenMs || memory > kHeldMB || left.contains("1 of an update");
        std::printf("%s%s | %s | %s%s | %d | %.1f | %d\n", bad ? "! " : "", answer.name,
                    qPrintable(seen.size() > 110 ? seen.left(107) + "..." : seen), left.constData(),
                    harmed ? ", HARM DONE" : "", memory, double(ms) / 1000, int(frozen));
        std::fflush(stdout);
        return !bad;
    }
};

int main(int argc, char *argv[])
{
    if (startRawService(kPort) < 0 || startRawService(kSpeedTestPort) < 0) {
        std::perror("service_attack");
        return 1;
    }
    QApplication application(argc, argv);
    ServiceAttack attack;
    return QTest::qExec(&attack, argc, argv);
}
#include "ServiceAttack.moc"
