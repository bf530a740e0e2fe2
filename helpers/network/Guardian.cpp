#include "helpers/network/Guardian.h"

#include "helpers/network/Network.h"
#include "helpers/system/Journal.h"
#include "helpers/system/Run.h"
#include "names/Names.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <linux/netfilter/nfnetlink.h>
#include <linux/rtnetlink.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// Changes come in swarms, as when a tunnel comes up, and others may insist on theirs as we do on ours.
constexpr int kPauseMs = 200;

/// The guardian's for its whole life.
constexpr char kGuardianLock[] = "guardian-lock";

/// The folder of a program's file, also when an upgrade has put another one in its place.
fs::path folderOf(const std::string &process)
{
    std::error_code failed;
    return fs::read_symlink("/proc/" + process + "/exe", failed).parent_path();
}

/// This helper stands in the program's folder, or in "tools" there.
fs::path bundleFolder()
{
    const fs::path folder = folderOf("self");
    return folder.filename() == "tools" ? folder.parent_path() : folder;
}

/// The kernel's announcements to these groups of a bus.
Descriptor announcements(int bus, unsigned groups)
{
    Descriptor netlink(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, bus));
    sockaddr_nl address = {};
    address.nl_family = AF_NETLINK;
    address.nl_groups = groups;
    const bool bound = bind(netlink, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    return bound ? std::move(netlink) : Descriptor();
}

Descriptor fileChanges()
{
    Descriptor notes(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    inotify_add_watch(notes, kJournalFolder, IN_MOVED_TO | IN_DELETE);
    inotify_add_watch(notes, "/etc", IN_MOVED_TO | IN_CLOSE_WRITE | IN_DELETE);
    return notes;
}

/// What the guardian listens to. Which change it was does not matter: what is there now counts.
struct Changes
{
    const Descriptor all[3] = {announcements(NETLINK_ROUTE, RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE | RTMGRP_IPV4_RULE |
                                                                1U << (RTNLGRP_IPV6_RULE - 1)),
                               announcements(NETLINK_NETFILTER, 1U << (NFNLGRP_NFTABLES - 1)), fileChanges()};
};

/// Sleeps until a process ends or something changes that may concern the network.
void waitForChange(int program, const State &state, const Changes &changes)
{
    inotify_add_watch(changes.all[2], "/etc/resolv.conf", IN_CLOSE_WRITE); // also where it is mounted
    std::vector<Descriptor> tunnels;
    std::vector<pollfd> events = {{program, POLLIN, 0}};
    bool ended = false;
    for (const Tunnel &tunnel : state.tunnels) {
        events.push_back({tunnels.emplace_back(tunnel.process.open()), POLLIN, 0});
        ended = ended || !tunnel.process.lives(); // since the state was read: then nothing may tell of it
    }
    const size_t ends = events.size();
    for (const int change : changes.all) {
        events.push_back({change, POLLIN, 0});
    }
    poll(events.data(), events.size(), ended ? 0 : -1);
    poll(events.data(), ends, kPauseMs); // an end waits for nobody
    for (const int change : changes.all) {
        for (char buffer[8192]; read(change, buffer, sizeof buffer) > 0 || errno == ENOBUFS;) {
        }
    }
}

} // namespace

Process programAbove()
{
    const pid_t parent = getppid();
    return folderOf(std::to_string(parent)) == bundleFolder() ? processOf(parent) : Process();
}

void startGuardian(const Process &program)
{
    const Descriptor handle = program.open();
    if (handle < 0 || !program.lives() || !JournalLock(kGuardianLock, false).held()) {
        return;
    }
    const pid_t child = fork();
    if (child == 0) {
        if (daemon(0, 0) == 0) { // nobody waits for its end or for its output's
            constexpr int kHandle = STDERR_FILENO + 1;
            dup2(handle, kHandle);
            fcntl(kHandle, F_SETFD, 0);
            close_range(kHandle + 1, ~0U, 0);
            becomeTool({bundleFolder() / "network", "watch", std::to_string(kHandle)});
        }
        _exit(1);
    }
    waitpid(child, nullptr, 0);
}

void watchNetwork(int program)
{
    for (const int signal : {SIGTERM, SIGHUP, SIGINT, SIGQUIT, SIGPIPE}) {
        std::signal(signal, SIG_IGN);
    }
    const JournalLock lock(kGuardianLock, false);
    if (!lock.held()) {
        return;
    }
    const Changes changes;
    bool ended = false;
    while (true) {
        pollfd end = {program, POLLIN, 0};
        if (!ended && poll(&end, 1, 0) > 0) {
            ended = true;
            unlockNetwork({}, {}); // nothing happens when the program has done so itself
        }
        const State state = keepNetwork(ended);
        if (ended && state.tunnels.empty()) {
            return;
        }
        waitForChange(ended ? -1 : program, state, changes);
    }
}
