#include "lab/service/Wire.h"

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <poll.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <unistd.h>

/// Enters the network namespace and makes the device there. Returns a descriptor, or -1 with the reason in errno.
static int makeDevice(const std::string &kind, const WireEnd &end)
{
    const int space = open(("/run/netns/" + end.space).c_str(), O_RDONLY | O_CLOEXEC);
    if (space < 0 || setns(space, CLONE_NEWNET) != 0) {
        return -1;
    }
    close(space);
    ifreq request = {};
    end.device.copy(request.ifr_name, sizeof request.ifr_name - 1);
    request.ifr_flags = static_cast<short>((kind == "tap" ? IFF_TAP : IFF_TUN) | IFF_NO_PI);
    const int device = open("/dev/net/tun", O_RDWR | O_CLOEXEC);
    return device >= 0 && ioctl(device, TUNSETIFF, &request) == 0 ? device : -1;
}

void carry(const std::string &kind, const WireEnd &one, const WireEnd &other)
{
    const int first = makeDevice(kind, one);
    const int second = first < 0 ? -1 : makeDevice(kind, other);
    if (second < 0) {
        std::perror(("lab_service: " + (first < 0 ? one : other).device).c_str());
        return;
    }
    std::puts("ready");
    std::fflush(stdout);
    std::array<pollfd, 2> ends = {{{first, POLLIN, 0}, {second, POLLIN, 0}}};
    std::array<char, 65536> packet{};
    while (poll(ends.data(), ends.size(), -1) > 0) {
        for (size_t from = 0; from < ends.size(); ++from) {
            if (ends[from].revents == 0) {
                continue;
            }
            const ssize_t size = read(ends[from].fd, packet.data(), packet.size());
            // A device that is down takes nothing, and the packet is lost as on any wire.
            if (size > 0 && write(ends[1 - from].fd, packet.data(), static_cast<size_t>(size)) < 0) {
                continue;
            }
        }
    }
}
