#include "helpers/compose9/Processes.h"

#include "helpers/system/Checks.h"
#include "names/Names.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

/// Asks `done` again and again until it returns true or the limit passes, and returns its last answer.
template <typename Done> static bool repeat(Done done, int limitMs)
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

/// Whether a process is one of these users'. Others may run what is in the bundle for as long as they like.
static bool isOneOf(const std::vector<uid_t> &users, const fs::path &process)
{
    std::ifstream status(process / "status");
    std::string word;
    while (status >> word) {
        uid_t user = 0;
        if (word == "Uid:" && status >> user) {
            return std::find(users.begin(), users.end(), user) != users.end();
        }
    }
    return false;
}

static std::string targetOf(const std::string &link)
{
    std::error_code gone;
    return fs::read_symlink(link, gone);
}

std::vector<Running> processesOf(const std::string &bundle, const std::vector<uid_t> &users)
{
    const std::string inside = bundle + "/";
    const std::string self = std::to_string(getpid());
    std::vector<Running> processes;
    std::error_code error;
    for (fs::directory_iterator it("/proc", error), end; !error && it != end; it.increment(error)) {
        const std::string name = it->path().filename();
        const std::string link = it->path() / "exe";
        const std::string program = targetOf(link);
        if (isNumber(name) && name != self && program.compare(0, inside.size(), inside) == 0 &&
            isOneOf(users, it->path())) {
            const auto process = static_cast<int>(syscall(SYS_pidfd_open, std::stoi(name), 0));
            processes.push_back({link, program, Descriptor(process)});
        }
    }
    return processes;
}

bool waitForEnds(const std::vector<Running> &processes, int limitMs)
{
    const auto hasEnded = [](const Running &running) {
        pollfd end = {running.process, POLLIN, 0};
        return running.process < 0 || poll(&end, 1, 0) > 0 || targetOf(running.link) != running.program;
    };
    return repeat([&] { return std::all_of(processes.begin(), processes.end(), hasEnded); }, limitMs);
}

bool waitForEnd(const std::string &bundle, uid_t user, int limitMs)
{
    return repeat([&] { return processesOf(bundle, {user}).empty(); }, limitMs);
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
    if (!repeat([&] { return waitpid(pid, &status, WNOHANG) == pid; }, watchMs) || status == 0) {
        return {};
    }
    return WIFSIGNALED(status) ? std::string("it was ended by a signal: ") + strsignal(WTERMSIG(status))
                               : "it ended at once with status " + std::to_string(WEXITSTATUS(status));
}
