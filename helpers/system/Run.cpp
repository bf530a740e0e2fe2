#include "helpers/system/Run.h"

#include "helpers/system/Descriptor.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// An empty file in memory for one of the tool's output streams.
Descriptor outputFile()
{
    return Descriptor(memfd_create("korvan", MFD_CLOEXEC));
}

std::string contentOf(int file)
{
    std::string text;
    lseek(file, 0, SEEK_SET);
    readAll(file, text);
    return text;
}

std::vector<char *> pointers(std::vector<std::string> &texts)
{
    std::vector<char *> result;
    result.reserve(texts.size() + 1);
    for (std::string &text : texts) {
        result.push_back(text.data());
    }
    result.push_back(nullptr);
    return result;
}

/// Waits for the child's end; kills it when the limit passes, and returns false then.
bool waitForEnd(pid_t child, int limitMs, int &status)
{
    const int watch = static_cast<int>(syscall(SYS_pidfd_open, child, 0));
    pollfd end{watch, POLLIN, 0};
    const bool inTime = watch < 0 || poll(&end, 1, limitMs) != 0;
    if (!inTime) {
        kill(child, SIGKILL);
    }
    close(watch);
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return inTime;
}

} // namespace

std::vector<std::string> cleanEnvironment()
{
    return {"PATH=/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL=C"};
}

void becomeTool(const std::vector<std::string> &command, const std::vector<std::string> &added)
{
    std::vector<std::string> words = command;
    std::vector<std::string> environment = cleanEnvironment();
    environment.insert(environment.end(), added.begin(), added.end());
    execve(words[0].c_str(), pointers(words).data(), pointers(environment).data());
}

void dieWithParent(int signal, pid_t parent)
{
    prctl(PR_SET_PDEATHSIG, signal);
    if (getppid() != parent) {
        raise(signal);
    }
}

RunResult runToEnd(const std::vector<std::string> &command, const std::string &input, int limitMs)
{
    RunResult result;
    // Files, not pipes, so that no order of reading and writing can block.
    const Descriptor in = sealedFile(input, MFD_CLOEXEC);
    const Descriptor out = outputFile();
    const Descriptor errors = outputFile();
    if (in < 0 || out < 0 || errors < 0) {
        result.errors = std::strerror(errno);
        return result;
    }
    const pid_t self = getpid();
    const pid_t child = fork();
    if (child == 0) {
        dieWithParent(SIGKILL, self);
        dup2(in, STDIN_FILENO);
        dup2(out, STDOUT_FILENO);
        dup2(errors, STDERR_FILENO);
        becomeTool(command);
        dprintf(STDERR_FILENO, "%s: %s", command[0].c_str(), std::strerror(errno));
        _exit(127);
    }
    if (child < 0) {
        result.errors = std::strerror(errno);
        return result;
    }
    int status = 0;
    if (!waitForEnd(child, limitMs, status)) {
        result.errors = command[0] + ": no answer within " + std::to_string(limitMs / 1000) + " s";
        return result;
    }
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    result.output = contentOf(out);
    result.errors = contentOf(errors);
    return result;
}
