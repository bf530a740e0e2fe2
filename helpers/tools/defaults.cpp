// "defaults read|write loginwindow AutoLaunchedApplicationDictionary [LIST]": keeps the list of login items in the
// configuration of the user who runs it, and mirrors it to that user's autostart folder.

#include "helpers/system/Descriptor.h"
#include "helpers/system/ReplaceFile.h"
#include "helpers/system/User.h"
#include "helpers/tools/LoginItems.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <set>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

void complain(const std::string &what)
{
    std::fprintf(stderr, "defaults: %s\n", what.c_str());
}

/// The content of a plain file; no value when there is none or it can not be read.
std::optional<std::string> readFile(const fs::path &path)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    struct stat info;
    std::string text;
    const bool isRead = file >= 0 && fstat(file, &info) == 0 && S_ISREG(info.st_mode) && readAll(file, text);
    return isRead ? std::optional(text) : std::nullopt;
}

/// Replaces the file, making the folders above it; complains when that can not be done.
bool store(const fs::path &path, const std::string &text)
{
    std::error_code ignored;
    fs::create_directories(path.parent_path(), ignored);
    if (!replaceFile(AT_FDCWD, path, text)) {
        complain(path.string() + ": " + std::strerror(errno));
        return false;
    }
    return true;
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
        done = store(folder / desktopEntryName(bundle), desktopEntry(bundle)) && done;
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
    const std::optional<User> user = userById(getuid());
    if (!user) {
        complain("the password database does not know this user");
        return 1;
    }
    const fs::path configuration = fs::path(user->home) / ".config";
    const fs::path stored = configuration / "korvan" / "login-items";
    if (isWrite) {
        const bool kept = store(stored, words[3]);
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
