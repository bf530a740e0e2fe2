// Stands in for OpenVPN: prints what it was started with as pairs "key NUL value NUL".
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <sys/prctl.h>
#include <unistd.h>

static void report(const std::string &key, const std::string &value)
{
    std::cout << key << '\0' << value << '\0';
}

int main(int argc, char *argv[])
{
    report("recorded", "");
    for (int i = 1; i < argc; ++i) {
        report("argument", argv[i]);
        if (std::string(argv[i]).compare(0, 14, "/proc/self/fd/") == 0) {
            std::stringstream content;
            content << std::ifstream(argv[i], std::ios::binary).rdbuf();
            report(argv[i - 1], content.str());
            report("writable", std::ofstream(argv[i], std::ios::app) << "x" << std::flush ? "yes" : "no");
        }
    }
    for (char **variable = environ; *variable; ++variable)
        report("environment", *variable);
    int signal = 0;
    prctl(PR_GET_PDEATHSIG, &signal);
    report("parent-death signal", std::to_string(signal));
    report("SIGTERM", std::signal(SIGTERM, SIG_DFL) == SIG_DFL ? "default" : "changed");
    std::error_code gone;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd"))
        report("descriptor", std::filesystem::read_symlink(entry, gone).string());
    return 0;
}
