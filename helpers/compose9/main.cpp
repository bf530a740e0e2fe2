#include "helpers/compose9/Bundle.h"
#include "helpers/compose9/Processes.h"
#include "helpers/compose9/SignedArchive.h"
#include "helpers/compose9/Starter.h"
#include "helpers/system/Descriptor.h"
#include "helpers/system/Person.h"
#include "names/Names.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

/// The folders of one update. They lie side by side, so that each can be moved to another's place in one step.
struct Places
{
    std::string program; ///< the name of the program
    std::string bundle;  ///< the installed bundle
    std::string staging; ///< where the update was unpacked, with this helper
    std::string fresh;   ///< the new bundle before the swap, the old one after it

    std::optional<SignedArchive> archive; ///< nothing where the update lies unpacked in the staging folder
    std::optional<uid_t> person;          ///< for whom root updates; nothing where the program's own user does

    /// The installed program's file.
    std::string executable() const { return bundle + kMacOs + program; }
};

constexpr int kEndLimitMs = 60000;
constexpr int kWatchMs = 5000;

/// Adds a line to the program's log, in the log's own form, and to standard error. A person's log is not root's to
/// write.
static void say(const Places &places, const std::string &text)
{
    fprintf(stderr, "compose9: %s\n", text.c_str());
    if (places.person) {
        return;
    }
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

/// Unpacks a signed archive into the staging folder. Nothing is written before its signature was checked.
static std::string stageSigned(const Places &places)
{
    const SignedArchive &archive = *places.archive;
    if (!archive.reason.empty()) {
        return archive.reason;
    }
    std::error_code error;
    fs::remove_all(places.staging, error); // of an update that was interrupted
    std::string reason = unpackSigned(archive, places.bundle + kMacOs + "compose7", places.staging);
    const std::string version = bundleVersion(places.staging + "/" + places.program + ".app");
    if (reason.empty() && version != archive.version) {
        reason = "it is signed as version " + archive.version + " and holds version " + version;
    }
    return reason;
}

/// Brings the new bundle to the place beside the old one and makes it ready to run there.
static std::string prepare(const Places &places, const Starter &starter)
{
    if (std::string reason = places.archive ? stageSigned(places) : std::string(); !reason.empty()) {
        return reason;
    }
    if (!places.archive && needsSignature(places.bundle + kMacOs)) {
        return "this program installs signed updates only";
    }
    std::error_code error;
    fs::remove_all(places.fresh, error); // of an update that was interrupted
    // Out of the staging folder, which every start of the program deletes.
    if (rename((places.staging + "/" + places.program + ".app").c_str(), places.fresh.c_str()) != 0) {
        return "the archive has no " + places.program + ".app or could not be unpacked: " + strerror(errno);
    }
    if (!waitForEnd(places.bundle, starter.user(), kEndLimitMs)) {
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
static std::string swapBundles(const Places &places, const Starter &starter)
{
    // So that not even a power failure brings up half a bundle.
    const int folder = open(places.fresh.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0 || syncfs(folder) != 0) {
        return std::string("can not store the new bundle: ") + strerror(errno);
    }
    close(folder);
    if (!waitForEnd(places.bundle, starter.user(), kWatchMs)) {
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

/// What the log is told of a failure.
static std::string failure(const std::string &reason)
{
    return "[ERROR]Update failed: " + reason;
}

/// Installs the update and starts the new version; the old one again when that fails, once `ending`, the processes of
/// the one that asked for the update, have ended. Returns the reason of a failure.
static std::string update(const Places &places, const std::vector<Running> &ending, Starter &starter)
{
    const std::string oldVersion = bundleVersion(places.bundle);
    std::string reason = prepare(places, starter);
    if (reason.empty()) {
        reason = swapBundles(places, starter);
    }
    if (!reason.empty()) {
        removeLeftovers(places);
        // The program may take a while to end; one that somebody has started since goes on.
        if (waitForEnds(ending, kEndLimitMs) && processesOf(places.bundle, {starter.user()}).empty()) {
            starter.start(failure(reason));
        }
        return reason;
    }
    const std::string success = "SUCCESS: updated from " + oldVersion + " to " + bundleVersion(places.bundle);
    say(places, success);
    starter.start(success);
    reason = starter.watch(kWatchMs);
    if (!reason.empty()) {
        reason = "the new version does not run, " + reason;
        const std::string stuck = swapBundles(places, starter);
        if (!stuck.empty()) {
            return reason + "; " + stuck;
        }
        starter.start(failure(reason));
    }
    removeLeftovers(places);
    return reason;
}

/// The places of an update beside a bundle, whose program has the bundle's name.
static Places placesBeside(const fs::path &bundle)
{
    Places places;
    const std::string parent = bundle.parent_path();
    places.program = bundle.stem();
    places.bundle = bundle;
    places.staging = parent + "/update.temp";
    places.fresh = parent + "/." + places.program + ".app.update";
    return places;
}

/// Does one update at a time, puts the old program back in its place first, and tells what happened.
static int run(const Places &places)
{
    if (access(places.executable().c_str(), X_OK) != 0) {
        fprintf(stderr, "compose9: %s: %s\n", places.bundle.c_str(), strerror(errno));
        return 1;
    }
    Starter starter(places.executable(), places.person);
    std::string reason = places.archive ? std::string() : returnToBundle(places);
    // With those of root that work for the person's window.
    const std::vector<Running> ending = processesOf(places.bundle, {getuid(), starter.user()});
    if (places.person && !waitForEnds(ending, kEndLimitMs)) { // before the lock, which no window may keep from others
        reason = "the program still runs";
    }
    // A file that nobody else can open: whoever may only read a file can hold its lock.
    const std::string lockPath = std::string(kJournalFolder) + "/update-lock";
    mkdir(kJournalFolder, 0700);
    const int lock = open(lockPath.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (reason.empty() && flock(lock, LOCK_EX | LOCK_NB) != 0) {
        reason = errno == EWOULDBLOCK ? "another update is being installed" : lockPath + ": " + strerror(errno);
    }
    if (reason.empty()) {
        reason = update(places, ending, starter);
    } else if (places.person || waitForEnds(ending, kEndLimitMs)) { // for a person it was waited above
        starter.start(failure(reason));
    }
    if (!reason.empty()) {
        say(places, failure(reason));
    }
    return reason.empty() ? 0 : 1;
}

/// The folder that this helper lies in.
static fs::path ownFolder()
{
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

/// Says on standard error why an archive would not be installed. Nothing is changed.
static int check(const std::string &archive, const std::string &signature)
{
    const std::string reason = readSigned(archive, signature, ownFolder() / "").reason;
    if (!reason.empty()) {
        fprintf(stderr, "%s\n", reason.c_str());
    }
    return reason.empty() ? 0 : 1;
}

/// Checks the archive on standard input for the person for whom the broker has started this, and goes on without the
/// broker, which ends with the window.
static int installGiven(const std::string &signature)
{
    Places places = placesBeside(ownFolder().parent_path().parent_path());
    places.person = personWorkedFor();
    if (!places.person) {
        fputs("compose9: this is for the broker to ask\n", stderr);
        return 2;
    }
    places.archive = readGiven(signature, ownFolder() / "");
    if (!places.archive->reason.empty()) {
        printf("%s\n", places.archive->reason.c_str());
        return 1;
    }
    if (const pid_t child = fork(); child != 0) {
        return child > 0 ? 0 : 1;
    }
    setsid();
    const Descriptor nothing(open("/dev/null", O_WRONLY | O_CLOEXEC));
    dup2(nothing, STDERR_FILENO); // whoever reads the one that was given could make root wait
    return run(places);
}

/// `compose9 STAGING NAME` installs the bundle NAME.app, which lies unpacked in the folder STAGING, in the place of
/// the bundle NAME.app beside that folder, and starts the program again. `compose9 --install ARCHIVE SIGNATURE` does
/// so with the bundle that it lies in and a signed archive, `compose9 --check ARCHIVE SIGNATURE` only says whether it
/// would. `compose9 --install-given SIGNATURE` installs, as root, the archive on its standard input
/// for the person in its environment, and has ended when that was checked: with status 1, and the reason on standard
/// output, when it is not accepted. Exit status 0, or 1 when the old version stays; the log of the program that is in
/// place tells what happened.
int main(int argc, char *argv[])
{
    const std::string first = argc > 1 ? argv[1] : "";
    if (argc == 4 && first == "--check") {
        return check(argv[2], argv[3]);
    }
    if (argc == 4 && first == "--install") {
        Places places = placesBeside(ownFolder().parent_path().parent_path());
        places.archive = readSigned(argv[2], argv[3], ownFolder() / "");
        return run(places);
    }
    if (argc == 3 && first == "--install-given") {
        return installGiven(argv[2]);
    }
    char staging[PATH_MAX];
    if (argc != 3 || strchr(argv[2], '/') || !realpath(argv[1], staging)) {
        fputs("usage: compose9 STAGING NAME | --install ARCHIVE SIGNATURE | --check ARCHIVE SIGNATURE\n", stderr);
        return 2;
    }
    Places places = placesBeside(fs::path(staging).parent_path() / (std::string(argv[2]) + ".app"));
    places.staging = staging;
    return run(places);
}
