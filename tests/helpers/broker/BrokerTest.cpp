#include "helpers/broker/Request.h"
#include "tests/support/Cases.h"
#include "tests/support/OwnNetwork.h"
#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QProcess>

#include <csignal>
#include <fcntl.h>
#include <random>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

static constexpr uid_t kPerson = 65534;

static QString inBundle(const char *name)
{
    return QCoreApplication::applicationDirPath() + QLatin1String(name);
}

/// A process that takes one descriptor along, as its standard input or as it is.
class Child : public QProcess
{
public:
    int inherited = -1;
    bool asInput = false;

protected:
    void setupChildProcess() override
    {
        asInput ? dup2(inherited, STDIN_FILENO) : fcntl(inherited, F_SETFD, 0);
        setpgid(0, 0);
    }
};

/// A window's end of the talk with a broker.
class Window
{
public:
    explicit Window(const QByteArray &claimed = QByteArray::number(kPerson))
    {
        int ends[2];
        const bool made = seteuid(kPerson) == 0 && socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) == 0 &&
                          seteuid(0) == 0;
        if (!made) {
            qFatal("no socket pair");
        }
        socket = ends[0];
        broker.inherited = ends[1];
        broker.asInput = true;
        broker.start("env", {"-i", "PKEXEC_UID=" + claimed, inBundle("/broker")});
        broker.waitForStarted();
        ::close(ends[1]);
    }
    ~Window()
    {
        end();
        broker.waitForFinished();
    }

    QByteArray greeting() const
    {
        QByteArray text(64, '\0');
        const ssize_t length = recv(socket, text.data(), 64, 0);
        return text.left(static_cast<int>(qMax<ssize_t>(length, 0)));
    }

    /// Sends a message with copies of these descriptors.
    void send(const QByteArray &text, const std::vector<int> &descriptors = {}) const
    {
        iovec bytes = {const_cast<char *>(text.constData()), static_cast<size_t>(text.size())};
        alignas(cmsghdr) char control[CMSG_SPACE(16 * sizeof(int))] = {};
        msghdr header = {};
        header.msg_iov = &bytes;
        header.msg_iovlen = 1;
        if (!descriptors.empty()) {
            header.msg_control = control;
            header.msg_controllen = CMSG_SPACE(descriptors.size() * sizeof(int));
            cmsghdr *part = CMSG_FIRSTHDR(&header);
            part->cmsg_level = SOL_SOCKET;
            part->cmsg_type = SCM_RIGHTS;
            part->cmsg_len = CMSG_LEN(descriptors.size() * sizeof(int));
            memcpy(CMSG_DATA(part), descriptors.data(), descriptors.size() * sizeof(int));
        }
        sendmsg(socket, &header, MSG_NOSIGNAL);
    }

    /// Starts a stand-in for the helper that the request asks for.
    std::unique_ptr<Child> start(const QByteArray &request) const
    {
        int ends[2];
        socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends);
        send(request, {ends[1]});
        auto standIn = std::make_unique<Child>();
        standIn->inherited = ends[0];
        standIn->setProcessChannelMode(QProcess::MergedChannels);
        standIn->start(inBundle("/standin"), {QString::number(ends[0])});
        standIn->waitForStarted();
        ::close(ends[0]);
        ::close(ends[1]);
        return standIn;
    }

    void end()
    {
        if (socket >= 0) {
            ::close(std::exchange(socket, -1));
        }
    }

    int socket = -1;
    Child broker;
};

static bool isGone(const QByteArray &pid)
{
    return QTest::qWaitFor([&] { return ::kill(pid.trimmed().toInt(), 0) != 0; }, 30000);
}

class BrokerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const char *name : {"/broker", "/standin"}) {
            QFile::remove(inBundle(name));
            QVERIFY(QFile::copy(QStringLiteral(KORVAN_BUNDLE) + name, inBundle(name)));
        }
        // What was undone, and when, is noted in one file.
        putScript(inBundle("/down.sh"), "echo \"down $*\" >>\"${0%/*}/undone\"");
        putScript(inBundle("/tools/route"), "echo \"route $*\" | tee -a \"${0%/*}/../undone\"");
        putScript(inBundle("/compose"), "exec 2>&1; trap 'echo ended >>\"${0%/*}/undone\"; exit 0' TERM; echo $$; "
                                        "while :; do sleep 0.02; done");
        putScript(inBundle("/compose4"), "read line; echo \"$KORVAN_PERSON $(id -u) $* $line\"; ls -l /proc/$$/fd | "
                                         "wc -l >&2; [ \"$1\" != die ] || kill -9 $$; exit 7");
    }

    void init()
    {
        QFile::remove(inBundle("/undone"));
        if (geteuid() != 0) {
            QSKIP("NEEDS ROOT: the root part was not tested", "");
        }
    }

    void onlyWhatIsOnTheList()
    {
        const auto words = [](std::initializer_list<const char *> list) {
            std::string text;
            for (const char *word : list) {
                text.append(word).push_back('\0');
            }
            return text;
        };
        const std::string tooMany = words({"route"}) + std::string(2 * kMostArguments + 2, '\0');
        const std::tuple<const char *, std::string, const char *> cases[] = {
            {"a helper", words({"compose", "--config", "x"}), "/compose --config x"},
            {"a script, an empty argument", words({"down", ""}), "bash /down.sh "},
            {"an update, in the one way", words({"compose9", "--install"}), "/compose9 --install-given --install"},
            {"a path", words({"/compose"}), ""},
            {"a way out", words({"tools/../compose"}), ""},
            {"another program", words({"bash", "-c", "id"}), ""},
            {"no name", words({""}), ""},
            {"nothing", "", ""},
            {"no end", "compose", ""},
            {"too many", tooMany, ""},
            {"too long", words({"compose", std::string(kLongestRequest, 'x').c_str()}), ""},
        };
        for (const auto &[name, message, expected] : cases) {
            const auto request = parseRequest(message);
            std::string said = request ? (request->isScript ? "bash " : "") + request->program : std::string();
            for (const std::string &argument : request ? request->arguments : std::vector<std::string>()) {
                said += " " + argument;
            }
            COMPARE_CASE(name, QByteArray::fromStdString(said), expected);
        }
    }

    /// Streams, arguments, rights, status; and nothing is open in the helper that the broker needs itself.
    void runsAHelperLikeOneOfItsOwn()
    {
        const Window window;
        QCOMPARE(window.greeting(), "ready");
        for (const QByteArray &first : {QByteArray("CHECK"), QByteArray("die")}) {
            const auto standIn = window.start("compose4" + QByteArray(1, '\0') + first + QByteArray(1, '\0'));
            standIn->write("in\n");
            QVERIFY(standIn->waitForFinished());
            QVERIFY2(standIn->readAll().startsWith("65534 0 " + first + " in\n"), first.constData());
            QCOMPARE(standIn->exitStatus(), first == "die" ? QProcess::CrashExit : QProcess::NormalExit);
            QVERIFY(first == "die" || standIn->exitCode() == 7);
        }
        QCOMPARE(fileBytes(inBundle("/undone")), "down \nroute add 0.0.0.0 mask 0.0.0.0\n");
    }

    void whoKillsTheStandInKillsTheHelper()
    {
        const Window window;
        window.greeting();
        const auto standIn = window.start(QByteArrayLiteral("compose\0"));
        QVERIFY(standIn->waitForReadyRead());
        const QByteArray pid = standIn->readLine();
        standIn->kill();
        standIn->waitForFinished();
        QVERIFY(isGone(pid) && window.broker.state() == QProcess::Running);
    }

    /// The helper may take its time; then the network is put back.
    void endsWithTheWindowOrWhenTold()
    {
        for (const bool told : {false, true}) {
            QFile::remove(inBundle("/undone"));
            Window window;
            window.greeting();
            const auto standIn = window.start(QByteArrayLiteral("compose\0"));
            QVERIFY(standIn->waitForReadyRead());
            told ? window.broker.terminate() : window.end();
            QVERIFY(window.broker.waitForFinished());
            QCOMPARE(window.broker.exitCode(), 0);
            const QByteArray undo = "down \nroute add 0.0.0.0 mask 0.0.0.0\n";
            QCOMPARE(fileBytes(inBundle("/undone")), undo + "ended\n" + undo);
            standIn->waitForFinished();
        }
    }

    /// The window is killed while it makes a child, which holds the socket from then on.
    void endsWithTheWindowsProcess()
    {
        int ready[2];
        QVERIFY(pipe2(ready, O_CLOEXEC) == 0);
        const pid_t window = fork();
        if (window == 0) {
            int ends[2];
            const bool made = seteuid(kPerson) == 0 &&
                              socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) == 0 && seteuid(0) == 0;
            const pid_t broker = made ? fork() : -1;
            if (broker == 0) {
                dup2(ends[1], STDIN_FILENO);
                execl("/usr/bin/env", "env", "-i", "PKEXEC_UID=65534", inBundle("/broker").toLocal8Bit().constData(),
                      nullptr);
            }
            ::close(ends[1]);
            char greeting[8];
            recv(ends[0], greeting, sizeof greeting, 0);
            if (fork() == 0) {
                close_range(0, 2, 0); // somebody waits for the end of this output
                alarm(60);
                pause();
            }
            const QByteArray number = QByteArray::number(broker) + '\n';
            _exit(write(ready[1], number.constData(), static_cast<size_t>(number.size())) > 0 ? 0 : 1);
        }
        char broker[16] = {};
        QVERIFY(read(ready[0], broker, sizeof broker - 1) > 1);
        waitpid(window, nullptr, 0);
        QVERIFY(isGone(broker));
    }

    void servesOneWindowOfItsOwnUser()
    {
        const Window first;
        QCOMPARE(first.greeting(), "ready");
        putFile("/run/korvan/window-lock", "1234"); // of somebody else
        QCOMPARE(Window().greeting(), "busy 1234");
        for (const char *claimed : {"0", "1234", "", "65534x", "-1"}) {
            Window other(claimed);
            COMPARE_CASE(claimed, other.greeting(), "");
        }
        QProcess noWindow;
        noWindow.start("env", {"-i", "PKEXEC_UID=65534", inBundle("/broker")});
        QVERIFY(noWindow.waitForFinished() && noWindow.exitCode() == 2);
    }

    /// All kinds of descriptors, too many of them, and anything at all as a request.
    void garbageStartsNothing()
    {
        const Window window;
        window.greeting();
        std::mt19937 random(1);
        const auto below = [&random](size_t limit) { return random() % limit; };
        const QByteArray names[] = {"compose", "compose4", "route", "down", "sh", "/bin/sh"};
        const int folder = ::open("/", O_RDONLY | O_CLOEXEC);
        for (int i = 0; i < 10000; ++i) {
            QByteArray text = names[below(6)].left(static_cast<int>(below(12)));
            for (size_t left = below(40); left > 0; --left) {
                text += static_cast<char>(random());
            }
            window.send(text + 'x', std::vector<int>(below(12), i % 2 == 0 ? window.socket : folder));
        }
        ::close(folder);
        // Its turn comes after all of them.
        const auto standIn = window.start(QByteArrayLiteral("route\0print\0"));
        QVERIFY(standIn->waitForFinished());
        QCOMPARE(standIn->readAll(), "route print\n");
        const QString open = "/proc/" + QString::number(window.broker.processId()) + "/fd";
        const auto kinds = QDir::System | QDir::AllEntries | QDir::NoDotAndDotDot;
        QTRY_COMPARE(QDir(open).entryList(kinds).size(), 6);
    }
};

int main(int argc, char *argv[])
{
    enterOwnNetwork();
    QCoreApplication application(argc, argv);
    BrokerTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "BrokerTest.moc"
