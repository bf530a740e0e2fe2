// Becomes the SSTP client sstpc. It takes the program's arguments, or with "-" alone from standard input, each ended
// by a NUL, and gives sstpc and pppd theirs.

#include "helpers/composec/SstpArguments.h"
#include "helpers/system/Arguments.h"
#include "helpers/system/Descriptor.h"
#include "helpers/system/Person.h"
#include "helpers/system/Run.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

namespace {

/// Gives the machine the options of every link, where it has none and the window may not do it.
void provideOptions()
{
    if (!PersonsRights::areOthers()) {
        return;
    }
    std::error_code ignored;
    const auto own = std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path() / "options";
    std::filesystem::create_directories("/etc/ppp", ignored);
    std::filesystem::copy_file(own, "/etc/ppp/options", std::filesystem::copy_options::skip_existing, ignored);
}

/// Opens the log file of a person's window with that person's rights and has pppd, which is root, write there. False,
/// with errno set, when that can not be done.
bool openPersonsLog(SstpRequest &request)
{
    const auto option = std::find(request.linkOptions.begin(), request.linkOptions.end(), "logfile");
    if (!PersonsRights::areOthers() || option == request.linkOptions.end()) {
        return true;
    }
    const PersonsRights rights;
    const int flags = O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    Descriptor log(rights.held() ? open((option + 1)->c_str(), flags, 0600) : -1);
    struct stat info = {};
    if (log < 0 || fstat(log, &info) != 0 || !S_ISREG(info.st_mode)) {
        return false;
    }
    *option = "logfd";
    *(option + 1) = std::to_string(log.release()); // pppd's from here on
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    const pid_t program = getppid();
    SstpRequest request = parseSstpArguments(takeArguments(argc, argv));
    if (!request.problem.empty()) {
        std::fprintf(stderr, "composec: %s\n", request.problem.c_str());
        return 2;
    }
    const Descriptor password = sealedFile(request.password);
    if (password < 0) {
        std::fprintf(stderr, "composec: can not pass the password on: %s\n", std::strerror(errno));
        return 1;
    }
    if (!openPersonsLog(request)) {
        std::fprintf(stderr, "composec: can not write the log file: %s\n", std::strerror(errno));
        return 1;
    }
    provideOptions();
    const std::vector<std::string> command = sstpcCommand(request, password);
    dieWithParent(SIGTERM, program);
    becomeTool(command);
    std::fprintf(stderr, "composec: %s: %s; it is in the package sstp-client\n", command[0].c_str(),
                 std::strerror(errno));
    return 127;
}
