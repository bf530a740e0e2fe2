#include "platform/Spawn.h"

#include <QDeadlineTimer>
#include <QFile>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Texts as a new program takes them.
class Words
{
public:
    explicit Words(const QStringList &texts)
    {
        for (const QString &text : texts) {
            m_bytes += QFile::encodeName(text);
        }
        for (QByteArray &bytes : m_bytes) {
            m_pointers += bytes.data();
        }
        m_pointers += nullptr;
    }

    char **data() { return m_pointers.data(); }

private:
    QList<QByteArray> m_bytes;
    QVector<char *> m_pointers;
};

} // namespace

pid_t spawnProcess(const QStringList &command, const QStringList &environment, const Streams &streams)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (int stream = 0; stream < int(streams.size()); ++stream) {
        if (streams[size_t(stream)] >= 0) {
            posix_spawn_file_actions_adddup2(&actions, streams[size_t(stream)], stream);
        }
    }
    Words words(command);
    pid_t process = -1;
    const int failure =
        posix_spawnp(&process, *words.data(), &actions, nullptr, words.data(), Words(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    errno = failure;
    return failure == 0 ? process : -1;
}

QByteArray toolOutput(const QString &program, const QStringList &arguments, int limitMs)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return {};
    }
    const pid_t process =
        spawnProcess(QStringList(program) + arguments, childEnvironment().toStringList(), {-1, ends[1], -1});
    close(ends[1]);
    QByteArray text;
    const QDeadlineTimer limit(limitMs);
    pollfd event = {ends[0], POLLIN, 0};
    while (process > 0) {
        char buffer[4096];
        const int ready = poll(&event, 1, int(limit.remainingTime()));
        const ssize_t length = ready > 0 ? read(ends[0], buffer, sizeof buffer) : ready;
        if (length > 0) {
            text.append(buffer, int(length));
        } else if (length == 0 || errno != EINTR) {
            kill(process, SIGKILL);
            TEMP_FAILURE_RETRY(waitpid(process, nullptr, 0));
            break;
        }
    }
    close(ends[0]);
    return text;
}
