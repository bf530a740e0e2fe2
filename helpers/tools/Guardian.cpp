#include "helpers/tools/Guardian.h"

#include "helpers/LockDown.h"
#include "helpers/tools/DefaultRoutes.h"

#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// This tool stands in the folder "tools" beside the program.
bool isTheProgram(pid_t process)
{
    std::error_code failed;
    const fs::path tool = fs::read_symlink("/proc/self/exe", failed);
    const fs::path parent = fs::read_symlink("/proc/" + std::to_string(process) + "/exe", failed);
    return !failed && parent == tool.parent_path().parent_path() / "Korvan";
}

/// The lock is the guardian's for its whole life: false when there is another one.
bool becomeTheGuardian()
{
    const std::string path = std::string(kJournalFolder) + "/guardian-lock";
    const int lock = open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    return lock >= 0 && flock(lock, LOCK_EX | LOCK_NB) == 0;
}

/// The caller waits for the end of this tool's output, so none of it may stay open here.
void letGoOfTheCaller()
{
    setsid();
    const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(null, stream);
    }
}

[[noreturn]] void watch(int program)
{
    letGoOfTheCaller();
    if (becomeTheGuardian()) {
        pollfd end = {program, POLLIN, 0};
        while (poll(&end, 1, -1) < 0) {
        }
        restoreDefaultRoutes({}); // nothing happens when the program has done so itself
    }
    _exit(0);
}

} // namespace

void guardDefaultRoutes()
{
    const pid_t program = getppid();
    const auto handle = static_cast<int>(syscall(SYS_pidfd_open, program, 0));
    if (handle < 0 || getppid() != program || !isTheProgram(program)) {
        return;
    }
    const pid_t child = fork();
    if (child == 0) {
        if (fork() == 0) { // the first child ends at once, so that nobody has to wait for the guardian
            watch(handle);
        }
        _exit(0);
    }
    close(handle);
    if (child > 0) {
        waitpid(child, nullptr, 0);
    }
}
