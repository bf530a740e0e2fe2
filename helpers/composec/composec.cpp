// Becomes the SSTP client sstpc. It takes the program's arguments and gives sstpc and pppd theirs.

#include "helpers/composec/SstpArguments.h"
#include "helpers/system/Run.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <sys/mman.h>

namespace {

/// A descriptor from which the password can be read and that the next program inherits; -1 on failure.
int passwordDescriptor(const std::string &password)
{
    const int fd = memfd_create("password", 0);
    const bool filled =
        fd >= 0 && write(fd, password.data(), password.size()) == static_cast<ssize_t>(password.size());
    return filled && lseek(fd, 0, SEEK_SET) == 0 ? fd : -1;
}

} // namespace

int main(int argc, char **argv)
{
    const SstpRequest request = parseSstpArguments({argv + 1, argv + argc});
    if (!request.problem.empty()) {
        std::fprintf(stderr, "composec: %s\n", request.problem.c_str());
        return 2;
    }
    const int fd = passwordDescriptor(request.password);
    if (fd < 0) {
        std::fprintf(stderr, "composec: can not pass the password on: %s\n", std::strerror(errno));
        return 1;
    }
    const std::vector<std::string> command = sstpcCommand(request, fd);
    dieWithParent(SIGTERM);
    becomeTool(command);
    std::fprintf(stderr, "composec: %s: %s; it is in the package sstp-client\n", command[0].c_str(),
                 std::strerror(errno));
    return 127;
}
