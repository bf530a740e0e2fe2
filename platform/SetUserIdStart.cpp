#include "platform/SetUserIdStart.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <pwd.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

using Environment = std::vector<std::pair<std::string, std::string>>;

/// Stands where a root process must find nothing: a folder that does not exist and that only root could make. In a
/// home of the user's, libraries read settings that name code to load, and follow links; a bus that the X server
/// names starts programs.
static constexpr char kNowhere[] = "/nonexistent";

[[noreturn]] static void fail(const char *what, const char *reason)
{
    std::fprintf(stderr, "Korvan: can not start as root: %s: %s\n", what, reason);
    std::_Exit(1);
}

/// Whether a variable of the caller's may pass. Languages and time zones are names, never paths: a path would make a
/// root process read a file of the caller's choice.
static bool mayPass(const std::string &name, const std::string &value)
{
    if (name == "DISPLAY" || name == "XAUTHORITY") {
        return true;
    }
    const bool isName = value.find("..") == std::string::npos && (value.empty() || value[0] != ':');
    if (name == "TZ") {
        return isName && value.rfind('/', 0) == std::string::npos;
    }
    return (name == "LANG" || name.rfind("LC_", 0) == 0) && isName && value.find('/') == std::string::npos;
}

static Environment allowedEnvironment(const passwd &user)
{
    Environment result;
    for (char **entry = environ; *entry != nullptr; ++entry) {
        const std::string text(*entry);
        const size_t equals = text.find('=');
        if (equals == std::string::npos) {
            continue;
        }
        const std::string name = text.substr(0, equals);
        const std::string value = text.substr(equals + 1);
        if (mayPass(name, value)) {
            result.emplace_back(name, value);
        }
    }
    const std::string uid = std::to_string(user.pw_uid);
    result.emplace_back("PATH", "/usr/sbin:/usr/bin:/sbin:/bin");
    result.emplace_back("HOME", kNowhere);
    const std::string noBus = std::string("unix:path=") + kNowhere;
    result.emplace_back("DBUS_SESSION_BUS_ADDRESS", noBus);
    result.emplace_back("AT_SPI_BUS_ADDRESS", noBus);
    result.emplace_back("NO_AT_BRIDGE", "1");
    result.emplace_back("USER", user.pw_name);
    result.emplace_back("LOGNAME", user.pw_name);
    const std::string sound = "/run/user/" + uid + "/pulse/native";
    if (access(sound.c_str(), F_OK) == 0) {
        result.emplace_back("PULSE_SERVER", "unix:" + sound);
    }
    return result;
}

static void openStandardDescriptors()
{
    int descriptor = -1;
    do {
        descriptor = open("/dev/null", O_RDWR);
        if (descriptor < 0) {
            fail("/dev/null", std::strerror(errno));
        }
    } while (descriptor <= STDERR_FILENO);
    close(descriptor);
}

/// The user who got root's rights for this process: the real one of a set-user-id start, or the one whom pkexec
/// names.
static std::optional<uid_t> userWithRootsRights()
{
    if (getuid() != geteuid()) {
        return getuid();
    }
    const char *number = geteuid() == 0 ? getenv("PKEXEC_UID") : nullptr;
    if (number == nullptr || *number == '\0' || std::strspn(number, "0123456789") != std::strlen(number)) {
        return std::nullopt;
    }
    return static_cast<uid_t>(std::strtoul(number, nullptr, 10));
}

bool takeOverSetUserIdStart()
{
    const std::optional<uid_t> uid = userWithRootsRights();
    if (!uid) {
        return false;
    }
    openStandardDescriptors();
    const passwd *user = getpwuid(*uid);
    if (user == nullptr) {
        fail("the password database", "it does not know the user");
    }
    const Environment environment = allowedEnvironment(*user);
    clearenv();
    for (const auto &[name, value] : environment) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    umask(077);
    if (setuid(0) != 0) {
        fail("setuid", std::strerror(errno));
    }
    return true;
}
