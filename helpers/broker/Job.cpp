#include "helpers/broker/Job.h"

#include "helpers/broker/Message.h"
#include "helpers/system/Run.h"
#include "names/Names.h"

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>

namespace {

constexpr size_t kStreams = 3;

/// A pipe, a socket or /dev/null: writing to anything else as root may mean more than writing. A file may only be
/// read.
bool isPlainStream(int fd)
{
    struct stat info = {};
    if (fstat(fd, &info) != 0) {
        return false;
    }
    if (S_ISREG(info.st_mode)) {
        return (fcntl(fd, F_GETFL) & O_ACCMODE) == O_RDONLY;
    }
    return S_ISFIFO(info.st_mode) || S_ISSOCK(info.st_mode) ||
           (S_ISCHR(info.st_mode) && info.st_rdev == makedev(1, 3));
}

[[noreturn]] void becomeHelper(const std::vector<std::string> &command, uid_t person, const int *streams)
{
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    std::signal(SIGPIPE, SIG_DFL);
    // Above the standard ones first, so that none is overwritten before it is copied.
    int copies[kStreams];
    for (size_t i = 0; i < kStreams; ++i) {
        copies[i] = fcntl(streams[i], F_DUPFD_CLOEXEC, 10);
    }
    for (size_t i = 0; i < kStreams; ++i) {
        dup2(copies[i], static_cast<int>(i));
    }
    becomeTool(command, {std::string(kPersonVariable) + "=" + std::to_string(person)});
    _exit(127);
}

} // namespace

bool Job::takeChannel(const std::string &bundle, uid_t person)
{
    const Message message = receiveMessage(m_channel, 1, kStreams);
    if (message.state == Message::State::None) {
        return true;
    }
    const bool hasStreams = message.state == Message::State::Whole && message.descriptors.size() == kStreams;
    if (hasStreams && !isRunning()) {
        return start(bundle, person, message.descriptors);
    }
    if (message.state == Message::State::End && isRunning()) {
        m_channel = Descriptor(); // nobody waits for the status
        send(SIGKILL);
        return true;
    }
    return isRunning(); // a message that nobody asked for changes nothing
}

bool Job::start(const std::string &bundle, uid_t person, const std::vector<Descriptor> &streams)
{
    std::vector<std::string> command = {bundle + m_request.program};
    if (m_request.isScript) {
        command.insert(command.begin(), "/bin/bash");
    }
    command.insert(command.end(), m_request.arguments.begin(), m_request.arguments.end());
    const Descriptor nothing(open("/dev/null", O_RDWR | O_CLOEXEC));
    int fds[kStreams] = {nothing, nothing, nothing};
    for (size_t i = 0; i < streams.size(); ++i) {
        if (!isPlainStream(streams[i])) {
            return false;
        }
        fds[i] = streams[i];
    }
    m_pid = fork();
    if (m_pid == 0) {
        becomeHelper(command, person, fds);
    }
    m_process = Descriptor(m_pid < 0 ? -1 : static_cast<int>(syscall(SYS_pidfd_open, m_pid, 0)));
    return m_process >= 0;
}

void Job::send(int signal) const
{
    if (isRunning()) {
        kill(m_pid, signal); // its number is its own until takeEnd()
    }
}

void Job::takeEnd()
{
    int status = 0;
    waitpid(m_pid, &status, 0);
    m_pid = -1;
    m_process = Descriptor();
    if (m_channel >= 0) {
        sendMessage(m_channel, std::string(reinterpret_cast<const char *>(&status), sizeof status));
    }
}
