#include "helpers/compose9/Bundle.h"
#include "helpers/compose9/Processes.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>

namespace fs = std::filesystem;

/// The folders of one update. They lie side by side, so that each can be moved to another's place in one step.
struct Places
{
    std::string program; ///< the name of the program
    std::string bundle;  ///< the installed bundle
    std::string staging; ///< where the update was unpacked, with this helper
    std::string fresh;   ///< the new bundle before the swap, the old one after it

    /// The installed program's file.
    std::string executable() const { return bundle + kMacOs + program; }
};

constexpr int kEndLimitMs = 60000;
constexpr int kWatchMs = 5000;

/// Adds a line to the program's log, in the log's own form, and to standard error.
static void say(const Places &places, const std::string &text)
{
    fprintf(stderr, "compose9: %s\n", text.c_str());
    const std::string path = places.bundle + kMacOs + "log.txt";
    const int fd = open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK, 0600);
    char clock[16];
    const time_t now = time(nullptr);
    struct tm local = {};
    strftime(clock, sizeof clock, "%H:%M:%S ", localtime_r(&now, &local));
    const std::string line = clock + text + "\r\n";
    if (fd < 0 || write(fd, line.c_str(), line.size()) < 0) {
        fprintf(stderr, "compose9: %s: %s\n", path.c_str(), strerror(errno));
    }
    if (fd >= 0) {
        close(fd);
    }
}

/// The start-up moved this helper out of the bundle. It goes back first of all, so that from then on the old program
/// is whole, whatever happens. A second start may have removed the staging folder meanwhile.
static std::string returnToBundle(const Places &places)
{
    const std::string home = places.bundle + kMacOs + "compose9";
    const std::string here = places.staging + "/compose9";
    if (renameat2(AT_FDCWD, here.c_str(), AT_FDCWD, home.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    std::error_code error;
    fs::copy_file("/proc/self/exe", home, fs::copy_options::skip_existing, error);
    return error ? "can not put compose9 back: " + error.message() : std::string();
}

/// Brings the new bundle to the place beside the old one and makes it ready to run there.
static std::string prepare(const Places &places)
{
    std::error_code error;
    fs::remove_all(places.fresh, error); // of an update that was interrupted
    // Out of the staging folder, which every start of the program deletes.
    if (rename((places.staging + "/" + places.program + ".app").c_str(), places.fresh.c_str()) != 0) {
        return "the archive has no " + places.program + ".app or could not be unpacked: " + strerror(errno);
    }
    if (!waitForEnd(places.bundle, kEndLimitMs)) {
        return "the program still runs";
    }
    std::string reason = checkBundle(places.fresh, places.program);
    if (reason.empty()) {
        reason = adoptOwnerAndModes(places.bundle, places.fresh, places.program);
    }
    if (reason.empty()) {
        reason = carryStateOver(places.bundle, places.fresh);
    }
    return reason;
}

/// Exchanges the two bundles. There is no moment without a bundle; a file system that can not do that keeps the old
/// one.
static std::string swapBundles(const Places &places)
{
    // So that not even a power failure brings up half a bundle.
    const int folder = open(places.fresh.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0 || syncfs(folder) != 0) {
        return std::string("can not store the new bundle: ") + strerror(errno);
    }
    close(folder);
    if (!waitForEnd(places.bundle, kWatchMs)) {
        return "the program was started meanwhile";
    }
    if (renameat2(AT_FDCWD, places.fresh.c_str(), AT_FDCWD, places.bundle.c_str(), RENAME_EXCHANGE) == 0) {
        return {};
    }
    return std::string("can not exchange the bundles: ") + strerror(errno);
}

static void removeLeftovers(const Places &places)
{
    std::error_code error;
    fs::remove_all(places.fresh, error);
    fs::remove_all(places.staging, error);
}

/// Installs the update and starts the new version; the old one again when that fails. Returns the reason of a
/// failure.
static std::string update(const Places &places)
{
    const std::string oldVersion = bundleVersion(places.bundle);
    const std::vector<Descriptor> ending = processesOf(places.bundle);
    std::string reason = prepare(places);
    if (reason.empty()) {
        reason = swapBundles(places);
    }
    if (!reason.empty()) {
        removeLeftovers(places);
        // The program may take a while to end; one that somebody has started since goes on.
        if (waitForEnds(ending, kEndLimitMs) && processesOf(places.bundle).empty()) {
            startProgram(places.executable());
        }
        return reason;
    }
    say(places, "SUCCESS: updated from " + oldVersion + " to " + bundleVersion(places.bundle));
    reason = watch(startProgram(places.executable()), kWatchMs);
    if (!reason.empty()) {
        reason = "the new version does not run, " + reason;
        const std::string stuck = swapBundles(places);
        if (!stuck.empty()) {
            return reason + "; " + stuck;
        }
        startProgram(places.executable());
    }
    removeLeftovers(places);
    return reason;
}

/// `compose9 STAGING NAME`: installs the bundle NAME.app, which lies unpacked in the folder STAGING, in the place of
/// the bundle NAME.app beside that folder, and starts the program again. Exit status 0, or 1 when the old version
/// stays; either way the log of the program that is in place tells what happened.
int main(int argc, char *argv[])
{
    char staging[PATH_MAX];
    if (argc != 3 || strchr(argv[2], '/') || !realpath(argv[1], staging)) {
        fputs("usage: compose9 STAGING NAME\n", stderr);
        return 2;
    }
    Places places;
    places.program = argv[2];
    places.staging = staging;
    const std::string parent = fs::path(staging).parent_path();
    places.bundle = parent + "/" + places.program + ".app";
    places.fresh = parent + "/." + places.program + ".app.update";
    if (access(places.executable().c_str(), X_OK) != 0) {
        fprintf(stderr, "compose9: %s: %s\n", places.bundle.c_str(), strerror(errno));
        return 1;
    }
    std::string reason = returnToBundle(places);
    if (!reason.empty() && waitForEnd(places.bundle, kEndLimitMs)) {
        startProgram(places.executable());
    }
    const int lock = open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (reason.empty() && flock(lock, LOCK_EX | LOCK_NB) != 0) {
        reason = errno == EWOULDBLOCK ? "another update is being installed" : parent + ": " + strerror(errno);
    } else if (reason.empty()) {
        reason = update(places);
    }
    if (!reason.empty()) {
        say(places, "[ERROR]Update failed: " + reason);
    }
    return reason.empty() ? 0 : 1;
}
