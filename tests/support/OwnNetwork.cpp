#include "tests/support/OwnNetwork.h"

#include <cstdio>
#include <cstring>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

void enterOwnNetwork()
{
    if (unshare(geteuid() == 0 ? CLONE_NEWNET : CLONE_NEWNET | CLONE_NEWUSER) != 0) {
        std::puts("NOTE: no network namespace of its own for this test");
        return;
    }
    const int socketFd = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request = {};
    std::strncpy(request.ifr_name, "lo", sizeof request.ifr_name - 1);
    request.ifr_flags = IFF_UP;
    ioctl(socketFd, SIOCSIFFLAGS, &request);
    close(socketFd);
}
