// Becomes the SSTP client sstpc. It takes the program's arguments, or with "-" alone from standard input, each ended
// by a NUL, and gives sstpc and pppd theirs.

#include "helpers/composec/SstpArguments.h"
#include "helpers/system/Arguments.h"
#include "helpers/system/Descriptor.h"
#include "helpers/system/Run.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

int main(int argc, char **argv)
{
    const SstpRequest request = parseSstpArguments(takeArguments(argc, argv));
    if (!request.problem.empty()) {
        std::fprintf(stderr, "composec: %s\n", request.problem.c_str());
        return 2;
    }
    const Descriptor password = sealedFile(request.password);
    if (password < 0) {
        std::fprintf(stderr, "composec: can not pass the password on: %s\n", std::strerror(errno));
        return 1;
    }
    const std::vector<std::string> command = sstpcCommand(request, password);
    dieWithParent(SIGTERM);
    becomeTool(command);
    std::fprintf(stderr, "composec: %s: %s; it is in the package sstp-client\n", command[0].c_str(),
                 std::strerror(errno));
    return 127;
}
