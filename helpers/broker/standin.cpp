// "standin CHANNEL": stands in for a helper that runs elsewhere as root. It gives its own standard streams to whoever
// is at the other end of the descriptor CHANNEL, waits for the helper's end and ends as that did. When it is killed
// itself, the helper is too.

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

bool sendStreams(int channel)
{
    const int streams[] = {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO};
    char byte = 0;
    iovec bytes = {&byte, 1};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof streams)] = {};
    msghdr header = {};
    header.msg_iov = &bytes;
    header.msg_iovlen = 1;
    header.msg_control = control;
    header.msg_controllen = sizeof control;
    cmsghdr *part = CMSG_FIRSTHDR(&header);
    part->cmsg_level = SOL_SOCKET;
    part->cmsg_type = SCM_RIGHTS;
    part->cmsg_len = CMSG_LEN(sizeof streams);
    std::memcpy(CMSG_DATA(part), streams, sizeof streams);
    return sendmsg(channel, &header, MSG_NOSIGNAL) == 1;
}

/// Ends by the same signal, so that whoever waits sees what became of the helper.
[[noreturn]] void endBy(int signal)
{
    prctl(PR_SET_DUMPABLE, 0); // no core file
    std::signal(signal, SIG_DFL);
    raise(signal);
    _exit(1);
}

} // namespace

int main(int argc, char **argv)
{
    const int channel = argc == 2 ? std::atoi(argv[1]) : -1; // NOLINT(cert-err34-c): a bad number is no socket
    if (!sendStreams(channel)) {
        return 127;
    }
    // The helper alone is to hold the streams: their other ends wait for it to let go of them.
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        close(stream);
    }
    int status = 0;
    if (recv(channel, &status, sizeof status, 0) != static_cast<ssize_t>(sizeof status)) {
        endBy(SIGKILL); // refused, or whoever ran the helper has died, and it too
    }
    if (WIFSIGNALED(status)) {
        endBy(WTERMSIG(status));
    }
    return WEXITSTATUS(status);
}
