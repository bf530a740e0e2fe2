#include "helpers/compose9/Processes.h"

#include "names/Names.h"

#include <cctype>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

/// Asks `done` again and again until it returns true or the limit passes, and returns its last answer.
template <typename Done> static bool poll(Done done, int limitMs)
{
    constexpr useconds_t kPauseUs = 50000;
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(limitMs);
    while (!done()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        usleep(kPauseUs);
    }
    return true;
}

/// Whether a process other than this one, which lies in the bundle too, runs one of its programs.
static bool isRunning(const std::string &bundle)
{
    const std::string inside = bundle + "/";
    const std::string self = std::to_string(getpid());
    std::error_code error;
    for (fs::directory_iterator it("/proc", error), end; !error && it != end; it.increment(error)) {
        const std::string name = it->path().filename();
        std::error_code gone;
        if (isdigit(static_cast<unsigned char>(name[0])) && name != self &&
            fs::read_symlink(it->path() / "exe", gone).native().compare(0, inside.size(), inside) == 0) {
            return true;
        }
    }
    return false;
}

bool waitForEnd(const std::string &bundle, int limitMs)
{
    return poll([&] { return !isRunning(bundle); }, limitMs);
}

int startProgram(const std::string &path)
{
    const pid_t pid = fork();
    if (pid != 0) {
        return pid;
    }
    const char *set = getenv(kRestartArgument);
    const std::string argument = set ? set : "";
    unsetenv(kRestartArgument);
    execl(path.c_str(), path.c_str(), argument.empty() ? nullptr : argument.c_str(), nullptr);
    _exit(127);
}

std::string watch(int pid, int watchMs)
{
    int status = 0;
    if (pid < 0) {
        return "it can not be started";
    }
    if (!poll([&] { return waitpid(pid, &status, WNOHANG) == pid; }, watchMs) || status == 0) {
        return {};
    }
    return WIFSIGNALED(status) ? std::string("it was ended by a signal: ") + strsignal(WTERMSIG(status))
                               : "it ended at once with status " + std::to_string(WEXITSTATUS(status));
}
