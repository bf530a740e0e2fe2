// Stands in for OpenVPN: prints what it was started with as pairs "key NUL value NUL".
#include <csignal>
#include <dirent.h>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <sys/prctl.h>
#include <unistd.h>

static void report(const std::string &key, const std::string &value)
{
    std::cout << key << '\0' << value << '\0';
}

static std::string contentOf(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

int main(int argc, char *argv[])
{
    report("recorded", "");
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        report("argument", argument);
        if (argument.compare(0, 14, "/proc/self/fd/") == 0) {
            const bool writable = access(argument.c_str(), W_OK) == 0 && std::ofstream(argument) << "x" << std::flush;
            report(argv[i - 1], contentOf(argument));
            report("writable", writable ? "yes" : "no");
        }
    }
    for (char **variable = environ; *variable; ++variable)
        report("environment", *variable);
    int signal = 0;
    prctl(PR_GET_PDEATHSIG, &signal);
    report("parent-death signal", std::to_string(signal));
    struct sigaction action = {};
    sigaction(SIGTERM, nullptr, &action);
    report("SIGTERM", action.sa_handler == SIG_DFL ? "default" : "changed");
    DIR *folder = opendir("/proc/self/fd");
    while (const dirent *entry = readdir(folder)) {
        char target[4096] = {};
        if (readlinkat(dirfd(folder), entry->d_name, target, sizeof(target) - 1) > 0)
            report("descriptor", target);
    }
    closedir(folder);
    return 0;
}
