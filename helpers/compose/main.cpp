#include "helpers/compose/CommandLine.h"
#include "helpers/compose/Credentials.h"
#include "helpers/compose/Files.h"
#include "helpers/compose/LockedDown.h"
#include "helpers/compose/ProfileFilter.h"
#include "helpers/network/Guardian.h"
#include "helpers/network/Network.h"
#include "helpers/system/Checks.h"
#include "helpers/system/Person.h"
#include "helpers/system/Run.h"
#include "names/Names.h"
#include "names/StateFiles.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <linux/capability.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#ifndef KORVAN_OPENVPN
#define KORVAN_OPENVPN "/usr/sbin/openvpn"
#endif

namespace {

constexpr size_t kMaxProfile = 1024 * 1024;

int fail(const std::string &reason)
{
    std::fprintf(stderr, "compose: %s\n", reason.c_str());
    return 1;
}

/// Puts aside whatever the caller's process passed on: descriptors, signal settings, file modes, core dumps.
void startClean()
{
    close_range(STDERR_FILENO + 1, ~0U, 0);
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            open("/dev/null", O_RDWR);
        }
    }
    for (int signal = 1; signal <= SIGRTMAX; ++signal) {
        std::signal(signal, SIG_DFL);
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    umask(077);
    // The answers to the prompts must not end up in a file.
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
}

/// Makes this process, and OpenVPN after it, end with `program`, which started it. False when that is gone already.
bool endWithTheProgram(pid_t program)
{
    dieWithParent(SIGTERM, program);
    // The request may have come too late; then nobody reads our output any more.
    pollfd reader = {STDOUT_FILENO, 0, 0};
    return poll(&reader, 1, 0) == 0 || (reader.revents & POLLERR) == 0;
}

std::string ownFolder()
{
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof(path));
    const std::string file(path, static_cast<size_t>(std::max<ssize_t>(length, 0)));
    return file.substr(0, file.rfind('/'));
}

bool usesProxy(const std::vector<Directive> &directives)
{
    return std::any_of(directives.begin(), directives.end(), [](const Directive &directive) {
        return directive.name() == "http-proxy" || directive.name() == "socks-proxy" || usesProxy(directive.inner);
    });
}

/// Puts the name of a sealed copy of the text into `path`.
bool seal(const std::string &text, std::string &path, std::string &error)
{
    Descriptor file = sealedFile(text);
    if (file < 0) {
        error = std::string("no memory for a private copy: ") + std::strerror(errno);
        return false;
    }
    path = descriptorPath(file.release()); // OpenVPN's from here on
    return true;
}

/// Reads and filters the profile and opens the files that it names. Nothing, and a reason, when it can not be used.
std::optional<FilteredProfile> loadProfile(const CommandLine &commandLine, const std::string &folder, int state,
                                           std::string &error)
{
    const auto text = readFile(state, commandLine.config, kMaxProfile, error);
    if (!text) {
        error.insert(0, "the profile " + commandLine.config + " ");
        return std::nullopt;
    }
    const auto directives = parseProfile(*text, error);
    if (!directives) {
        return std::nullopt;
    }
    auto profile = filterProfile(*directives, {commandLine.askCredentials, !commandLine.proxy.empty()}, error);
    if (!profile) {
        return std::nullopt;
    }
    const Descriptor files = openFolder(folder + kProfileFolder, error);
    if (files < 0 || !openNamedFiles(profile->directives, files, !PersonsRights::areOthers(), error)) {
        return std::nullopt;
    }
    profile->asksCredentials = profile->asksCredentials || commandLine.askCredentials;
    return profile;
}

/// Makes the copy of the profile that OpenVPN reads. False, with a reason, when that fails.
bool sealProfile(FilteredProfile &profile, bool proxy, Handover &handover, std::string &error)
{
    // Behind a proxy the last address was the proxy's.
    if (handover.lockedDown && !proxy && !usesProxy(profile.directives)) {
        const auto notes = replaceNames(profile.directives, lastAddresses(), canBeResolved);
        profile.notes.insert(profile.notes.end(), notes.begin(), notes.end());
    }
    const auto text = renderProfile(profile.directives, error);
    if (!text) {
        return false;
    }
    for (const std::string &note : profile.notes) {
        std::printf("compose: %s\n", note.c_str());
    }
    std::fflush(stdout);
    return seal(*text, handover.config, error) && seal("-\n", handover.keyPassword, error);
}

/// The user whose window manages OpenVPN: the one for whom this helper works, else its own.
unsigned windowsUser()
{
    const char *user = std::getenv(kPersonVariable);
    return user != nullptr && isNumber(user) ? unsigned(std::strtoul(user, nullptr, 10)) : getuid();
}

/// Readies the machine's network for OpenVPN, which becomes of this process. Without root's rights there is nothing
/// to ready, and OpenVPN says so itself.
bool prepareNetwork(const CommandLine &commandLine, Handover &handover, std::string &error)
{
    if (geteuid() != 0) {
        return true;
    }
    const Process program = programAbove();
    if (program.lives()) {
        startGuardian(program);
    }
    error = prepareTunnel(unsigned(std::strtoul(commandLine.managementPort.c_str(), nullptr, 10)), windowsUser(),
                          handover.lockedDown);
    return error.empty();
}

/// Reads all that lies in the state folder, with the rights of the person whose folder it is. Nothing, and a reason,
/// when it can not be used.
std::optional<FilteredProfile> readState(const CommandLine &commandLine, const std::string &folder,
                                         Handover &handover, std::string &error)
{
    const PersonsRights rights;
    if (!rights.held()) {
        error = "can not take the rights of the user who wants the tunnel";
        return std::nullopt;
    }
    const Descriptor state = openFolder(folder, error);
    if (state < 0) {
        return std::nullopt;
    }
    auto profile = loadProfile(commandLine, folder, state, error);
    if (profile && commandLine.proxyCredentials) {
        Descriptor file = openCredentials(state, &kProxyLoginFile[1], error);
        if (file < 0) {
            error.insert(0, "the proxy's credential file ");
            return std::nullopt;
        }
        handover.proxyCredentials = descriptorPath(file.release());
    }
    return profile;
}

/// Asks for the credentials that OpenVPN needs. False, with a reason, when there are none.
bool prepareCredentials(Handover &handover, std::string &error)
{
    const auto answers = askCredentials(STDIN_FILENO, STDOUT_FILENO, error);
    return answers && seal(*answers, handover.credentials, error);
}

/// Where the state lies: in the application folder, or, for somebody else's window, where that says that its profile
/// is. Whatever it says, only what that person may read is read.
Folders findFolders(const std::vector<std::string> &arguments)
{
    Folders folders = {ownFolder(), ownFolder()};
    const auto config = std::find(arguments.begin(), arguments.end(), "--config");
    if (PersonsRights::areOthers() && config != arguments.end() && config + 1 != arguments.end()) {
        folders.state = (config + 1)->substr(0, (config + 1)->rfind(kProfileFolder));
    }
    return folders;
}

/// Gives up what neither OpenVPN, which speaks with strangers, nor its scripts need of root's capabilities, for good
/// and for every program that they start. Without root's rights there is nothing to give up.
void dropCapabilities()
{
    // The copies of a person's files are that person's, and resolvconf's hooks may start daemons.
    constexpr int kKept[] = {CAP_NET_ADMIN, CAP_NET_RAW,      CAP_NET_BIND_SERVICE, CAP_IPC_LOCK,
                             CAP_SYS_NICE,  CAP_DAC_OVERRIDE, CAP_SETUID,           CAP_SETGID};
    for (int each = 0; prctl(PR_CAPBSET_READ, each) >= 0; ++each) {
        if (std::find(std::begin(kKept), std::end(kKept), each) == std::end(kKept)) {
            prctl(PR_CAPBSET_DROP, each);
        }
    }
}

/// Becomes OpenVPN. Returns only on failure.
int becomeOpenVpn(const std::vector<std::string> &command)
{
    // What was not answered here can not be answered at all.
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    dropCapabilities();
    becomeTool(command);
    return fail(command[0] + " can not be started: " + std::strerror(errno));
}

} // namespace

int main(int argc, char *argv[])
{
    const pid_t program = getppid();
    startClean();
    const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    const Folders folders = findFolders(arguments);
    std::string error;
    auto commandLine = parseCommandLine(arguments, folders, error);
    if (!commandLine) {
        return fail(error);
    }
    if (access(KORVAN_OPENVPN, X_OK) != 0) {
        return fail(KORVAN_OPENVPN " is missing: install the package openvpn");
    }
    Handover handover;
    auto profile = readState(*commandLine, folders.state, handover, error);
    if (!endWithTheProgram(program)) { // only now: taking somebody's rights forgets it
        return fail("the program that started this one has ended");
    }
    if (!profile || !prepareNetwork(*commandLine, handover, error) ||
        !sealProfile(*profile, !commandLine->proxy.empty(), handover, error) ||
        (profile->asksCredentials && !prepareCredentials(handover, error))) {
        return fail(error);
    }
    // All files are open, and root has no business in somebody's folder.
    commandLine->changeFolder = commandLine->changeFolder && !PersonsRights::areOthers();
    return becomeOpenVpn(openVpnCommand(KORVAN_OPENVPN, *commandLine, handover, folders.bundle));
}
