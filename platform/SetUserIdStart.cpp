#include "platform/SetUserIdStart.h"

#include "platform/RootsAlone.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

[[noreturn]] static void fail(const char *what, const char *reason = std::strerror(errno))
{
    std::fprintf(stderr, "Korvan: can not give up root's rights safely: %s: %s\n", what, reason);
    std::_Exit(1);
}

static void openStandardDescriptors()
{
    int descriptor = -1;
    do {
        descriptor = open("/dev/null", O_RDWR);
        if (descriptor < 0) {
            fail("/dev/null");
        }
    } while (descriptor <= STDERR_FILENO);
    close(descriptor);
}

/// The program "broker" beside this one.
static std::string rootPartPath()
{
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    const std::string file(path, length > 0 ? static_cast<size_t>(length) : 0);
    return file.substr(0, file.rfind('/') + 1) + "broker";
}

/// Becomes the root part. It finds the real user's number where pkexec would have left it.
[[noreturn]] static void becomeRootPart(std::string path, int socket)
{
    std::string user = "PKEXEC_UID=" + std::to_string(getuid());
    char search[] = "PATH=/usr/sbin:/usr/bin:/sbin:/bin";
    char *argv[] = {path.data(), nullptr};
    char *environment[] = {search, user.data(), nullptr};
    if (setuid(0) == 0 && dup2(socket, STDIN_FILENO) == STDIN_FILENO) {
        execve(path.c_str(), argv, environment);
    }
    fail(path.c_str());
}

static int startRootPart(const std::string &path)
{
    int ends[2];
    // The real user's, which the root part looks at.
    if (seteuid(getuid()) != 0 || socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0 ||
        seteuid(0) != 0) {
        fail("socketpair");
    }
    const pid_t child = fork();
    if (child < 0) {
        fail("fork");
    }
    if (child == 0) {
        becomeRootPart(path, ends[1]);
    }
    close(ends[1]);
    return ends[0];
}

/// Makes this process the real user's for good, and makes sure of it.
static void becomeRealUser()
{
    const uid_t user = getuid();
    const gid_t group = getgid();
    if (setresgid(group, group, group) != 0 || setresuid(user, user, user) != 0) {
        fail("setresuid");
    }
    uid_t users[3];
    gid_t groups[3];
    getresuid(&users[0], &users[1], &users[2]);
    getresgid(&groups[0], &groups[1], &groups[2]);
    for (int i = 0; i < 3; ++i) {
        if (users[i] != user || groups[i] != group) {
            fail("setresuid", "it had no effect");
        }
    }
    if (user != 0 && (setuid(0) == 0 || seteuid(0) == 0)) {
        fail("setresuid", "there is a way back");
    }
}

int dropSetUserId()
{
    if (getuid() == geteuid()) {
        return -1;
    }
    openStandardDescriptors();
    const std::string path = rootPartPath();
    int socket = -1;
    if (geteuid() == 0 && isRootsAlone(path.c_str()) && isRootsAlone("/proc/self/exe")) {
        socket = startRootPart(path);
    } else {
        std::fputs("Korvan: somebody but root can change this program; its set-user-id bit is not used\n", stderr);
    }
    becomeRealUser();
    return socket;
}
