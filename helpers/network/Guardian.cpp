#include "helpers/network/Guardian.h"

#include "helpers/network/Network.h"
#include "helpers/system/Descriptor.h"
#include "helpers/system/Run.h"
#include "names/Names.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <libmnl/libmnl.h>
#include <linux/netfilter/nf_tables.h>
#include <linux/netfilter/nfnetlink.h>
#include <linux/rtnetlink.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace {

/// Changes come in swarms, as when a tunnel comes up, and others may insist on theirs as we do on ours.
constexpr int kPauseMs = 200;

/// The announcement that a table of the packet filter is gone.
constexpr unsigned kTableGone = NFNL_SUBSYS_NFTABLES << 8 | NFT_MSG_DELTABLE;

constexpr char kNameServerFile[] = "resolv.conf";

/// A program's file, also when an upgrade has put another one in its place.
fs::path programFile(int process)
{
    std::error_code failed;
    const std::string path =
        fs::read_symlink("/proc/" + (process == 0 ? std::string("self") : std::to_string(process)) + "/exe", failed);
    constexpr char kDeleted[] = " (deleted)";
    const size_t end = path.rfind(kDeleted);
    return end != std::string::npos && end + std::strlen(kDeleted) == path.size() ? path.substr(0, end) : path;
}

/// This helper stands in the program's folder, or in "tools" there.
fs::path bundleFolder()
{
    const fs::path folder = programFile(0).parent_path();
    return folder.filename() == "tools" ? folder.parent_path() : folder;
}

int openProcess(int number)
{
    return int(syscall(SYS_pidfd_open, number, 0));
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

/// Takes what has been announced, and tells whether a message of this type was among it, or one was lost. Which
/// change it was does not matter: what is there now counts.
bool takeAnnouncements(int netlink, unsigned type)
{
    alignas(nlmsghdr) char buffer[8192];
    bool found = false;
    ssize_t length = 0;
    while ((length = recv(netlink, buffer, sizeof buffer, 0)) > 0 || errno == ENOBUFS) {
        found = found || length < 0;
        auto left = int(length);
        for (const auto *each = reinterpret_cast<const nlmsghdr *>(buffer); mnl_nlmsg_ok(each, left);
             each = mnl_nlmsg_next(each, &left)) {
            found = found || each->nlmsg_type == type;
        }
    }
    return found;
}

Descriptor fileChanges()
{
    Descriptor notes(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    inotify_add_watch(notes, kJournalFolder, IN_MOVED_TO | IN_DELETE);
    inotify_add_watch(notes, "/etc", IN_MOVED_TO | IN_CLOSE_WRITE | IN_DELETE);
    return notes;
}

/// Whether the journal or the name servers were among the files that changed.
bool concernsUs(int notes)
{
    bool found = false;
    alignas(inotify_event) char buffer[8192];
    ssize_t length = 0;
    while ((length = read(notes, buffer, sizeof buffer)) > 0) {
        for (ssize_t at = 0; at < length;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer + at);
            found = found || event->len == 0 || std::strcmp(event->name, kNameServerFile) == 0 ||
                    std::strcmp(event->name, kNetworkJournal) == 0;
            at += static_cast<ssize_t>(sizeof *event + event->len);
        }
    }
    return found;
}

/// What the guardian listens to.
struct Changes
{
    Descriptor routes = announcements(NETLINK_ROUTE, RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE | RTMGRP_IPV4_RULE |
                                                         1U << (RTNLGRP_IPV6_RULE - 1));
    Descriptor filter = announcements(NETLINK_NETFILTER, 1U << (NFNLGRP_NFTABLES - 1));
    Descriptor files = fileChanges();
};

/// Sleeps until a process ends or something changes that may concern the network.
void waitForChange(int program, const State &state, const Changes &changes)
{
    inotify_add_watch(changes.files, "/etc/resolv.conf", IN_CLOSE_WRITE); // also where it is mounted
    std::vector<Descriptor> tunnels;
    std::vector<pollfd> events = {
        {program, POLLIN, 0}, {changes.filter, POLLIN, 0}, {changes.routes, POLLIN, 0}, {changes.files, POLLIN, 0}};
    for (const Tunnel &tunnel : state.tunnels) {
        tunnels.emplace_back(openProcess(tunnel.process.number));
        events.push_back({tunnels.back(), POLLIN, 0});
    }
    const auto endOf = [](const pollfd &event) { return event.revents != 0; };
    bool changed = false;
    while (poll(events.data(), events.size(), changed ? kPauseMs : -1) > 0) {
        if (events[1].revents != 0 && !takeAnnouncements(changes.filter, kTableGone)) {
            events[1].revents = 0; // only its end is somebody else's doing
        }
        changed = changed || events[2].revents != 0 || (events[3].revents != 0 && concernsUs(changes.files));
        events[2].revents = events[3].revents = 0;
        if (std::any_of(events.begin(), events.end(), endOf)) {
            return; // an end waits for nobody
        }
        if (changed) { // the swarm is looked at once
            events[2].fd = events[3].fd = -1;
        }
    }
    takeAnnouncements(changes.routes, 0);
    concernsUs(changes.files);
}

/// The lock is the guardian's for its whole life.
Descriptor guardianLock()
{
    const std::string path = std::string(kJournalFolder) + "/guardian-lock";
    Descriptor lock(open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
    return lock >= 0 && flock(lock, LOCK_EX | LOCK_NB) == 0 ? std::move(lock) : Descriptor();
}

/// Whether somebody holds the lock; nobody does while there is no folder for it.
bool hasGuardian()
{
    return access(kJournalFolder, F_OK) == 0 && guardianLock() < 0;
}

} // namespace

Process programAbove()
{
    const pid_t parent = getppid();
    return programFile(parent).parent_path() == bundleFolder() ? processOf(parent) : Process();
}

void startGuardian(const Process &program)
{
    const Descriptor handle(openProcess(program.number));
    if (handle < 0 || !program.lives() || hasGuardian()) {
        return;
    }
    const std::string helper = bundleFolder() / "network";
    const pid_t child = fork();
    if (child == 0) {
        if (fork() == 0) { // the first child ends at once, so that nobody has to wait for the guardian
            setsid();
            const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
            for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
                dup2(null, stream); // the caller's reader waits for the end of its output
            }
            constexpr int kHandle = STDERR_FILENO + 1;
            dup2(handle, kHandle);
            fcntl(kHandle, F_SETFD, 0);
            close_range(kHandle + 1, ~0U, 0);
            becomeTool({helper, "watch", std::to_string(kHandle)});
        }
        _exit(0);
    }
    if (child > 0) {
        waitpid(child, nullptr, 0);
    }
}

void watchNetwork(int program)
{
    for (const int signal : {SIGTERM, SIGHUP, SIGINT, SIGQUIT, SIGPIPE}) {
        std::signal(signal, SIG_IGN);
    }
    keepNetwork(false); // its lock also makes the folder
    const Descriptor lock = guardianLock();
    if (lock < 0) {
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
