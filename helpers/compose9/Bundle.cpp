#include "helpers/compose9/Bundle.h"

#include "names/StateFiles.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

static std::string failure(const fs::path &path, int error = errno)
{
    return path.string() + ": " + strerror(error);
}

/// Calls `visit(path, status)` for the folder and all below it, without following links, a folder before what is in
/// it, until one call returns a reason to stop.
template <typename Visit> static std::string walk(const fs::path &path, Visit visit)
{
    struct stat info = {};
    if (lstat(path.c_str(), &info) != 0) {
        return failure(path);
    }
    std::string reason = visit(path, info);
    if (!reason.empty() || !S_ISDIR(info.st_mode)) {
        return reason;
    }
    std::error_code error;
    for (fs::directory_iterator it(path, error), end; !error && reason.empty() && it != end; it.increment(error)) {
        reason = walk(it->path(), visit);
    }
    return error ? failure(path, error.value()) : reason;
}

std::string bundleVersion(const std::string &bundle)
{
    return versionIn(bundle + kMacOs);
}

std::string versionIn(const std::string &folder)
{
    std::ifstream file(folder + "version");
    std::string version;
    std::getline(file, version);
    return version;
}

std::string checkBundle(const std::string &bundle, const std::string &program)
{
    std::string reason = walk(bundle, [](const fs::path &path, const struct stat &info) -> std::string {
        const bool plain = S_ISDIR(info.st_mode) || S_ISREG(info.st_mode);
        return plain ? "" : path.string() + " is neither a file nor a folder";
    });
    if (!reason.empty()) {
        return reason;
    }
    for (const char *name :
         {program.c_str(), "broker", "standin", "compose", "compose4", "composec", "compose6", "compose7", "compose9",
          "network", "up.sh", "down.sh", "tools/route", "tools/netstat", "tools/ping", "tools/defaults"}) {
        struct stat info = {};
        const std::string path = bundle + kMacOs + name;
        if (stat(path.c_str(), &info) != 0) {
            return failure(path);
        }
        if (!S_ISREG(info.st_mode) || info.st_size == 0 || !(info.st_mode & S_IXUSR)) {
            return path + " is no program";
        }
    }
    return bundleVersion(bundle).empty() ? bundle + " does not tell its version" : std::string();
}

static std::string copyOne(const fs::path &from, const fs::path &to, const struct stat &info)
{
    std::error_code error;
    if (S_ISDIR(info.st_mode)) {
        fs::create_directory(to, from, error);
    } else if (S_ISREG(info.st_mode)) {
        fs::copy_file(from, to, error);
    } else {
        return {}; // the program makes no links in its state
    }
    if (error) {
        return failure(from, error.value());
    }
    const bool kept =
        lchown(to.c_str(), info.st_uid, info.st_gid) == 0 && chmod(to.c_str(), info.st_mode & 07777) == 0;
    return kept ? std::string() : failure(to);
}

std::string carryStateOver(const std::string &oldBundle, const std::string &newBundle)
{
    for (const StateFile &file : kStateFiles) {
        const std::string name = file.path + 1;
        if (file.fate != StateFate::Kept || name.find('/') != std::string::npos) {
            continue; // a folder brings what is in it
        }
        const fs::path from = fs::path(oldBundle + kMacOs) / name;
        const fs::path to = fs::path(newBundle + kMacOs) / name;
        std::error_code error;
        fs::remove_all(to, error);
        if (!fs::exists(fs::symlink_status(from, error))) {
            continue;
        }
        std::string reason = walk(from, [&](const fs::path &path, const struct stat &info) {
            return copyOne(path, path == from ? to : to / path.lexically_relative(from), info);
        });
        if (!reason.empty()) {
            return reason;
        }
    }
    return {};
}

std::string adoptOwnerAndModes(const std::string &oldBundle, const std::string &newBundle, const std::string &program)
{
    struct stat bundle = {};
    struct stat executable = {};
    if (stat(oldBundle.c_str(), &bundle) != 0 || stat((oldBundle + kMacOs + program).c_str(), &executable) != 0) {
        return failure(oldBundle);
    }
    const std::string newProgram = newBundle + kMacOs + program;
    return walk(newBundle, [&](const fs::path &path, const struct stat &info) {
        const bool isProgram = path == newProgram;
        const bool runs = S_ISDIR(info.st_mode) || (info.st_mode & S_IXUSR);
        mode_t mode = runs ? 0755 : 0644;
        if (path == newBundle) {
            mode = bundle.st_mode & 07777;
        } else if (isProgram) {
            mode = (executable.st_mode & 07777) | S_IXUSR;
        }
        // The owner first: changing it clears the set-user-id bit.
        const struct stat &owner = isProgram ? executable : bundle;
        const bool adopted = lchown(path.c_str(), owner.st_uid, owner.st_gid) == 0 && chmod(path.c_str(), mode) == 0;
        return adopted ? std::string() : failure(path);
    });
}
