#include "tests/support/OwnNetwork.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <unistd.h>

void enterOwnNetwork()
{
    const bool isRoot = geteuid() == 0;
    if (unshare(CLONE_NEWNET | (isRoot ? CLONE_NEWNS : CLONE_NEWUSER)) != 0) {
        std::puts("NOTE: no network namespace of its own for this test");
        return;
    }
    // The helpers keep their journals in /run.
    if (isRoot && (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
                   mount("tmpfs", "/run", "tmpfs", 0, nullptr) != 0)) {
        std::perror("/run");
        std::_Exit(1);
    }
    const int socketFd = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request = {};
    std::strncpy(request.ifr_name, "lo", sizeof request.ifr_name - 1);
    request.ifr_flags = IFF_UP;
    ioctl(socketFd, SIOCSIFFLAGS, &request);
    close(socketFd);
}
