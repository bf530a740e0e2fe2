#include "platform/RootPart.h"

#include "common/AppPath.h"
#include "common/Wait.h"
#include "names/Names.h"
#include "platform/RootsAlone.h"
#include "platform/Spawn.h"
#include "platform/TunnelHolder.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <optional>
#include <poll.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

static constexpr char kPkexec[] = "/usr/bin/pkexec";

/// The socket to the root part, -1 without one. Made once; whoever asks for a new one replaces it.
static std::atomic<int> s_socket{-1};

/// The socket of one that has not told yet whether it is ready, or -1.
static int s_ungreeted = -1;

static QString rootPartPath()
{
    return appPath("/broker");
}

bool isStartedByRoot()
{
    return geteuid() == 0;
}

bool usesRootPart()
{
    static const bool uses = !isStartedByRoot() && isRootsAlone(QFile::encodeName(rootPartPath()).constData());
    return uses;
}

static void replaceSocket(int socket)
{
    const int old = s_socket.exchange(socket);
    if (old >= 0) {
        close(old);
    }
}

void takeRootPart(int socket)
{
    s_ungreeted = socket;
}

/// Starts the root part through pkexec, with one end of a socket pair as its standard input and `errors` as its
/// standard error. Returns the other end, or -1.
static int startThroughPkexec(pid_t &process, int errors)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
        return -1;
    }
    // A shell that pkexec does not know, for one, would make it refuse.
    const QStringList environment = {QStringLiteral("PATH=/usr/bin:/bin")};
    process = spawnProcess({QLatin1String(kPkexec), rootPartPath()}, environment, {ends[1], -1, errors});
    const int failure = errno;
    close(ends[1]);
    if (process < 0) {
        qDebug().noquote() << "WARNING:" << kPkexec << std::strerror(failure);
        close(ends[0]);
        return -1;
    }
    return ends[0];
}

/// Why there is no root part, by its greeting; an empty refusal when there is one.
static Refusal refusalIn(const QByteArray &greeting)
{
    if (greeting == "ready") {
        return {};
    }
    if (greeting.startsWith("busy ")) {
        return heldBy(greeting.mid(5));
    }
    return {QT_TRANSLATE_NOOP("RootPart", "Secure failed, you must run me as root at least one time"), {}};
}

/// Waits for the first message of a root part that has just been started. Returns it, empty where there was none; no
/// value when the program ends first.
static std::optional<QByteArray> greetingFrom(int socket)
{
    QSocketNotifier notifier(socket, QSocketNotifier::Read);
    Wait wait;
    wait.until(&notifier, &QSocketNotifier::activated);
    if (!wait.run()) {
        return {};
    }
    QByteArray greeting(32, '\0');
    const ssize_t length = recv(socket, greeting.data(), static_cast<size_t>(greeting.size()), MSG_DONTWAIT);
    return greeting.left(static_cast<int>(qMax<ssize_t>(length, 0)));
}

/// Whether somebody is still at the other end.
static bool isAlive(int socket)
{
    pollfd event = {socket, POLLIN, 0};
    // A signal, as of a child's end, says nothing of the other end.
    return socket >= 0 && TEMP_FAILURE_RETRY(poll(&event, 1, 0)) >= 0 && (event.revents & (POLLHUP | POLLERR)) == 0;
}

/// Starts the root part through pkexec and waits for its greeting. Returns the socket to it, -1 with the reason in
/// `refusal` if there is none.
static int askPkexec(Refusal &refusal)
{
    constexpr int mostTries = 4;
    for (int tries = 1;; ++tries) {
        QFile errors;
        pid_t process = 0;
        const bool isOpen =
            errors.open(memfd_create("pkexec", MFD_CLOEXEC), QFile::ReadWrite, QFile::AutoCloseHandle);
        const int socket = isOpen ? startThroughPkexec(process, errors.handle()) : -1;
        const std::optional<QByteArray> greeting = socket >= 0 ? greetingFrom(socket) : QByteArray();
        refusal = refusalIn(greeting.value_or(QByteArray()));
        if (refusal.isEmpty()) {
            return socket;
        }
        if (socket < 0) {
            return -1;
        }
        close(socket);
        if (!greeting) {
            kill(process, SIGTERM); // its question goes with it
            return -1;
        }
        int status = 0;
        TEMP_FAILURE_RETRY(waitpid(process, &status, 0));
        errors.seek(0);
        const QByteArray reason = errors.readAll().trimmed();
        qDebug().noquote() << "WARNING:" << kPkexec << "ended with" << WEXITSTATUS(status) << reason;
        // It gives polkit 25 s to answer, which are few where a machine has just been started or has much to do.
        const bool isLate = reason.contains("Timeout") || reason.contains("timed out");
        if (!isLate || tries == mostTries) {
            return -1;
        }
    }
}

Refusal askForRoot()
{
    if (!usesRootPart() || isAlive(s_socket)) {
        return {};
    }
    Refusal refusal;
    int socket = std::exchange(s_ungreeted, -1);
    if (socket < 0) {
        socket = askPkexec(refusal);
    } else if (refusal = refusalIn(greetingFrom(socket).value_or(QByteArray())); !refusal.isEmpty()) {
        close(socket);
        waitpid(0, nullptr, WNOHANG);
    }
    if (refusal.isEmpty()) {
        replaceSocket(socket);
    }
    return refusal;
}

bool hasRoot()
{
    if (usesRootPart()) {
        return isAlive(s_socket);
    }
    return getuid() == 0 || setuid(0) == 0;
}

bool sendWithDescriptors(int socket, QByteArray text, const std::vector<int> &descriptors)
{
    constexpr size_t most = 4;
    iovec bytes = {text.data(), static_cast<size_t>(text.size())};
    alignas(cmsghdr) char control[CMSG_SPACE(most * sizeof(int))] = {};
    msghdr header = {};
    header.msg_iov = &bytes;
    header.msg_iovlen = 1;
    const size_t size = qMin(descriptors.size(), most) * sizeof(int);
    if (size > 0) {
        header.msg_control = control;
        header.msg_controllen = CMSG_SPACE(size);
        cmsghdr *part = CMSG_FIRSTHDR(&header);
        part->cmsg_level = SOL_SOCKET;
        part->cmsg_type = SCM_RIGHTS;
        part->cmsg_len = CMSG_LEN(size);
        std::memcpy(CMSG_DATA(part), descriptors.data(), size);
    }
    return sendmsg(socket, &header, MSG_NOSIGNAL) == text.size();
}

bool requestHelper(const QString &name, const QStringList &arguments, int channel)
{
    QByteArray text;
    for (const QString &word : QStringList(name) + arguments) {
        text += word.toLocal8Bit() + '\0';
    }
    return sendWithDescriptors(s_socket, text, channel >= 0 ? std::vector<int>{channel} : std::vector<int>());
}

Refusal whyNoUpdates()
{
    if (isStartedByRoot() || (usesRootPart() && QFile::exists(appPath("/") + QLatin1String(kUpdateKeysFile)))) {
        return {};
    }
    return {QT_TRANSLATE_NOOP("RootPart",
                              "This update can not be installed from here, because nothing proves that it "
                              "comes from the service.\nPlease install the new package of Korvan instead."),
            {}};
}
