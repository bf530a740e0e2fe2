#include "helpers/tools/Guardian.h"

#include "helpers/system/Run.h"
#include "helpers/tools/DefaultRoutes.h"
#include "names/Names.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <linux/rtnetlink.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
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

/// The kernel's announcements of every change to an IPv4 route, or -1.
int routeChanges()
{
    const int netlink = socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE);
    sockaddr_nl address = {};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_IPV4_ROUTE;
    if (netlink >= 0 && bind(netlink, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        close(netlink);
        return -1;
    }
    return netlink;
}

/// Which change it was does not matter: what is in the table now counts.
void forget(int netlink)
{
    char buffer[4096];
    while (recv(netlink, buffer, sizeof buffer, 0) > 0 || errno == ENOBUFS) {
    }
}

[[noreturn]] void watch(int program)
{
    letGoOfTheCaller();
    const int changes = routeChanges();
    keepDefaultRoutesAway(); // its lock also makes the folder
    if (becomeTheGuardian()) {
        pollfd events[] = {{program, POLLIN, 0}, {changes, POLLIN, 0}};
        while (poll(events, 2, -1) < 0 || events[0].revents == 0) {
            if (events[1].revents != 0) {
                forget(events[1].fd);
                keepDefaultRoutesAway();
            }
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
    dieWithParent(SIGKILL, program); // from here on the guardian undoes what this tool has done so far
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
