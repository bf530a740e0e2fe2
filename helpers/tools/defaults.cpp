// "defaults read|write loginwindow AutoLaunchedApplicationDictionary [LIST]": keeps the list of login items in the
// configuration of the user who sits at the desktop, and mirrors it to that desktop's autostart folder.

#include "helpers/tools/LoginItems.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <grp.h>
#include <optional>
#include <pwd.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

void complain(const std::string &what)
{
    std::fprintf(stderr, "defaults: %s\n", what.c_str());
}

/// The user who started all this. Where even the real user is root, whoever became root by the usual ways says who it
/// was; the program itself leaves it in USER.
const passwd *realUser()
{
    if (getuid() != 0) {
        return getpwuid(getuid());
    }
    for (const char *name : {"SUDO_UID", "PKEXEC_UID"}) {
        const char *number = std::getenv(name);
        if (number != nullptr && *number != '\0' && std::strspn(number, "0123456789") == std::strlen(number)) {
            return getpwuid(static_cast<uid_t>(std::strtoul(number, nullptr, 10)));
        }
    }
    const char *user = std::getenv("USER");
    return user != nullptr && *user != '\0' ? getpwnam(user) : getpwuid(0);
}

/// Gives up all rights but that user's, so that links in the user's folders lead nowhere the user could not go.
bool become(const passwd &user)
{
    if (geteuid() == 0 && initgroups(user.pw_name, user.pw_gid) != 0) {
        return false;
    }
    return setresgid(user.pw_gid, user.pw_gid, user.pw_gid) == 0 &&
           setresuid(user.pw_uid, user.pw_uid, user.pw_uid) == 0;
}

/// The content of a plain file; no value when there is none or it can not be read.
std::optional<std::string> readFile(const fs::path &path)
{
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW);
    struct stat info;
    if (fd < 0 || fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        close(fd);
        return {};
    }
    std::string text;
    char buffer[4096];
    ssize_t n = 0;
    while ((n = read(fd, buffer, sizeof buffer)) > 0) {
        text.append(buffer, static_cast<size_t>(n));
    }
    close(fd);
    return text;
}

/// Replaces the file in one step, making the folders above it; complains when that can not be done.
bool replaceFile(const fs::path &path, const std::string &text)
{
    std::error_code ignored;
    fs::create_directories(path.parent_path(), ignored);
    std::string draft = path.parent_path() / ".korvan-XXXXXX";
    const int fd = mkstemp(draft.data());
    const bool written = fd >= 0 && write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    const bool replaced = written && rename(draft.c_str(), path.c_str()) == 0;
    if (!replaced) {
        complain(path.string() + ": " + std::strerror(errno));
        unlink(draft.c_str());
    }
    close(fd);
    return replaced;
}

void removeOtherEntries(const fs::path &folder, const std::set<std::string> &wanted)
{
    std::error_code error;
    std::vector<fs::path> unwanted;
    for (const fs::directory_entry &file : fs::directory_iterator(folder, error)) {
        const std::string name = file.path().filename();
        if (wanted.count(name) == 0 && isOwnDesktopEntry(name, readFile(file.path()).value_or(""))) {
            unwanted.push_back(file.path());
        }
    }
    for (const fs::path &path : unwanted) {
        if (!fs::remove(path, error)) {
            complain(path.string() + ": " + error.message());
        }
    }
}

bool mirror(const std::string &list, const fs::path &folder)
{
    const LoginItems items = parseLoginItems(list);
    for (const std::string &problem : items.problems) {
        complain(problem);
    }
    bool done = true;
    std::set<std::string> names;
    for (const std::string &bundle : items.bundles) {
        names.insert(desktopEntryName(bundle));
        done = replaceFile(folder / desktopEntryName(bundle), desktopEntry(bundle)) && done;
    }
    removeOtherEntries(folder, names);
    return done;
}

} // namespace

int main(int argc, char **argv)
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    const bool isRead = words.size() == 3 && words[0] == "read";
    const bool isWrite = words.size() == 4 && words[0] == "write";
    if ((!isRead && !isWrite) || words[1] != "loginwindow" || words[2] != "AutoLaunchedApplicationDictionary") {
        complain("use read|write loginwindow AutoLaunchedApplicationDictionary [LIST]");
        return 2;
    }
    umask(077);
    const passwd *user = realUser();
    if (user == nullptr || !become(*user)) {
        complain("can not act for the user at the desktop");
        return 1;
    }
    const fs::path configuration = fs::path(user->pw_dir) / ".config";
    const fs::path stored = configuration / "korvan" / "login-items";
    if (isWrite) {
        const bool kept = replaceFile(stored, words[3]);
        return mirror(words[3], configuration / "autostart") && kept ? 0 : 1;
    }
    const std::optional<std::string> list = readFile(stored);
    if (!list) {
        std::puts("The domain/default pair of (loginwindow, AutoLaunchedApplicationDictionary) does not exist");
        return 1;
    }
    std::puts(list->c_str());
    return 0;
}
