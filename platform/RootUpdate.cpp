#include "platform/RootUpdate.h"

#include "common/Wait.h"
#include "names/Names.h"
#include "platform/RootPart.h"
#include "platform/Spawn.h"

#include <QCoreApplication>
#include <QFile>
#include <QSocketNotifier>

#include <sys/socket.h>
#include <unistd.h>

/// Waits for the updater and starts the program at its word, or when there comes none. It runs as this user, and is
/// no program of the bundle, whose end the updater waits for.
static const char kRestarter[] = "while IFS= read -r outcome; do said=1; "
                                 "%1=$outcome \"$0\" \"$@\" </dev/null; "
                                 "echo $? >&0; done 2>/dev/null; [ -n \"$said\" ] || exec \"$0\" \"$@\" </dev/null";

/// Both ends of a talk; they close themselves.
struct Talk
{
    int ends[2] = {-1, -1};

    explicit Talk(int type)
    {
        if (socketpair(AF_UNIX, type | SOCK_CLOEXEC, 0, ends) != 0) {
            ends[0] = ends[1] = -1;
        }
    }
    Talk(const Talk &) = delete;
    Talk &operator=(const Talk &) = delete;
    ~Talk()
    {
        giveUp(0);
        giveUp(1);
    }
    void giveUp(int end)
    {
        if (ends[end] >= 0) {
            close(std::exchange(ends[end], -1));
        }
    }
};

static bool startRestarter(int socket, const QStringList &arguments)
{
    QStringList words = {QStringLiteral("/bin/bash"), QStringLiteral("-c"),
                         QString::fromLatin1(kRestarter).arg(QLatin1String(kUpdateOutcome)),
                         QCoreApplication::applicationFilePath()};
    words += arguments;
    const QStringList environment = QProcessEnvironment::systemEnvironment().toStringList();
    return spawnProcess(words, environment, {socket, -1, -1}) > 0;
}

/// Waits until the updater has checked the archive. Returns its exit status, as waitpid() gives it; -1 without one.
static int statusFrom(int channel)
{
    QSocketNotifier notifier(channel, QSocketNotifier::Read);
    Wait wait;
    wait.until(&notifier, &QSocketNotifier::activated);
    wait.run();
    int status = -1;
    return recv(channel, &status, sizeof status, MSG_DONTWAIT) == static_cast<ssize_t>(sizeof status) ? status : -1;
}

QString installThroughRootPart(const QString &archive, const QByteArray &signature, const QStringList &arguments)
{
    QString cannot = QStringLiteral("it can not be checked");
    QFile file(archive);
    QFile nothing(QStringLiteral("/dev/null"));
    Talk channel(SOCK_SEQPACKET);
    Talk outcome(SOCK_STREAM);
    if (!file.open(QIODevice::ReadOnly) || !nothing.open(QIODevice::WriteOnly) || channel.ends[0] < 0 ||
        outcome.ends[0] < 0 ||
        !requestHelper(QStringLiteral("compose9"), {QString::fromLatin1(signature)}, channel.ends[1]) ||
        !sendWithDescriptors(channel.ends[0], QByteArray(1, '\0'),
                             {file.handle(), outcome.ends[1], nothing.handle()})) {
        return cannot;
    }
    channel.giveUp(1);
    outcome.giveUp(1);
    if (statusFrom(channel.ends[0]) != 0) {
        char reason[1024] = {};
        const ssize_t length = recv(outcome.ends[0], reason, sizeof reason - 1, MSG_DONTWAIT);
        return length > 0 ? QString::fromLocal8Bit(reason).trimmed() : cannot;
    }
    return startRestarter(outcome.ends[0], arguments) ? QString() : cannot;
}
