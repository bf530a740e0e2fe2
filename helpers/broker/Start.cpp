#include "helpers/broker/Start.h"

#include "helpers/system/Checks.h"
#include "helpers/system/User.h"
#include "names/Names.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <grp.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

constexpr char kUserVariable[] = "PKEXEC_UID";

/// How long an earlier window of the same person may take to clean up, and how often that is looked at.
constexpr int kPatienceMs = 10000;
constexpr int kPauseMs = 20;

void resetLimits()
{
    const rlimit none = {RLIM_INFINITY, RLIM_INFINITY};
    for (const auto resource : {RLIMIT_CPU, RLIMIT_FSIZE, RLIMIT_DATA, RLIMIT_AS, RLIMIT_NPROC, RLIMIT_MEMLOCK,
                                RLIMIT_RTTIME, RLIMIT_SIGPENDING}) {
        setrlimit(resource, &none);
    }
    const rlimit stack = {8 << 20, RLIM_INFINITY};
    setrlimit(RLIMIT_STACK, &stack);
    const rlimit files = {1024, 4096};
    setrlimit(RLIMIT_NOFILE, &files);
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    setpriority(PRIO_PROCESS, 0, 0);
}

void resetTimers()
{
    const itimerval none = {};
    for (const auto timer : {ITIMER_REAL, ITIMER_VIRTUAL, ITIMER_PROF}) {
        setitimer(timer, &none, nullptr);
    }
}

/// The signals that ask for the end are only ever read from the descriptor.
Descriptor takeSignals()
{
    for (int signal = 1; signal <= SIGRTMAX; ++signal) {
        std::signal(signal, SIG_DFL);
    }
    std::signal(SIGPIPE, SIG_IGN);
    sigset_t ends;
    sigemptyset(&ends);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        sigaddset(&ends, signal);
    }
    sigprocmask(SIG_SETMASK, &ends, nullptr);
    return Descriptor(signalfd(-1, &ends, SFD_CLOEXEC));
}

Descriptor openLock()
{
    mkdir(kJournalFolder, 0700);
    const Descriptor folder(open(kJournalFolder, O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat info = {};
    if (folder < 0 || fstat(folder, &info) != 0 || info.st_uid != 0 || (info.st_mode & 022) != 0) {
        return Descriptor();
    }
    return Descriptor(openat(folder, kTunnelHolder, O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
}

std::optional<uid_t> holderOf(int lock)
{
    char number[16] = {};
    const ssize_t length = pread(lock, number, sizeof number - 1, 0);
    return length > 0 && isNumber(number) ? std::optional(static_cast<uid_t>(std::strtoul(number, nullptr, 10)))
                                          : std::nullopt;
}

} // namespace

Descriptor startClean()
{
    close_range(STDERR_FILENO + 1, ~0U, 0);
    const int nothing = open("/dev/null", O_RDWR);
    dup2(nothing, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    if (nothing > STDERR_FILENO) {
        close(nothing);
    }
    resetTimers();
    Descriptor signals = takeSignals();
    setsid(); // a terminal's keys are not for this process
    umask(077);
    resetLimits();
    const bool isRoot =
        chdir("/") == 0 && setgroups(0, nullptr) == 0 && setresgid(0, 0, 0) == 0 && setresuid(0, 0, 0) == 0;
    return isRoot ? std::move(signals) : Descriptor();
}

std::optional<Window> findWindow(std::string &reason)
{
    const char *number = std::getenv(kUserVariable);
    if (number == nullptr || !isNumber(number)) {
        reason = "nobody got root's rights for this program; Korvan starts it by itself";
        return std::nullopt;
    }
    const auto uid = static_cast<uid_t>(std::strtoul(number, nullptr, 10));
    int type = 0;
    socklen_t length = sizeof type;
    ucred peer = {};
    socklen_t peerLength = sizeof peer;
    if (getsockopt(STDIN_FILENO, SOL_SOCKET, SO_TYPE, &type, &length) != 0 || type != SOCK_SEQPACKET ||
        getsockopt(STDIN_FILENO, SOL_SOCKET, SO_PEERCRED, &peer, &peerLength) != 0) {
        reason = "the standard input leads to no window of Korvan's";
        return std::nullopt;
    }
    if (uid == 0 || peer.uid != uid || !userById(uid)) {
        reason = "the window at the standard input is somebody else's";
        return std::nullopt;
    }
    Descriptor process(static_cast<int>(syscall(SYS_pidfd_open, peer.pid, 0)));
    if (process < 0) {
        reason = "the window at the standard input has ended";
        return std::nullopt;
    }
    return Window{uid, std::move(process)};
}

Descriptor lockTunnel(uid_t person, std::optional<uid_t> &holder)
{
    Descriptor lock = openLock();
    for (int waited = 0; lock >= 0 && flock(lock, LOCK_EX | LOCK_NB) != 0; waited += kPauseMs) {
        holder = holderOf(lock);
        if (holder != person || waited >= kPatienceMs) {
            return Descriptor();
        }
        usleep(kPauseMs * 1000);
    }
    if (lock >= 0 && (ftruncate(lock, 0) != 0 || !writeAll(lock, std::to_string(person)))) {
        return Descriptor();
    }
    return lock;
}
