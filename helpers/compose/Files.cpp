#include "helpers/compose/Files.h"

#include "helpers/compose/DirectiveRules.h"
#include "helpers/compose/ProfileFilter.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>

namespace {

/// Opens `name` below the folder for reading, never leaving the folder, not even through links.
Descriptor openBelow(int folder, const std::string &name, mode_t type, unsigned resolve, std::string &error)
{
    open_how how = {};
    how.flags = O_RDONLY | O_NONBLOCK | O_NOCTTY;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS | resolve;
    Descriptor file(static_cast<int>(syscall(SYS_openat2, folder, name.c_str(), &how, sizeof(how))));
    if (file < 0) {
        const bool escapes = errno == EXDEV || errno == ELOOP;
        error = escapes ? "leads out of its folder through a link"
                        : std::string("can not be opened: ") + std::strerror(errno);
        return {};
    }
    struct stat status = {};
    if (fstat(file, &status) != 0 || (status.st_mode & S_IFMT) != type) {
        error = type == S_IFDIR ? "is not a folder" : "is not a regular file";
        return {};
    }
    return file;
}

/// False, and a reason, when there is more than `limit` bytes.
bool readUpTo(int file, size_t limit, std::string &content, std::string &error)
{
    if (!readAll(file, content, limit + 1)) {
        error = std::string("can not be read: ") + std::strerror(errno);
        return false;
    }
    if (content.size() > limit) {
        error = "is larger than " + std::to_string(limit / 1024) + " KB";
        return false;
    }
    return true;
}

/// A sealed copy of a file below the folder that is not larger than `limit` bytes.
Descriptor copyBelow(int folder, const std::string &name, size_t limit, std::string &content, std::string &error)
{
    const Descriptor file = openBelow(folder, name, S_IFREG, 0, error);
    if (file < 0 || !readUpTo(file, limit, content, error)) {
        return {};
    }
    Descriptor copy = sealedFile(content);
    if (copy < 0) {
        error = std::string("can not be copied: ") + std::strerror(errno);
    }
    return copy;
}

} // namespace

Descriptor openFolder(const std::string &path, std::string &error)
{
    Descriptor folder(open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (folder < 0) {
        error = path + ": " + std::strerror(errno);
    }
    return folder;
}

std::optional<std::string> readFile(int folder, const std::string &name, size_t limit, std::string &error)
{
    const Descriptor file = openBelow(folder, name, S_IFREG, RESOLVE_NO_SYMLINKS, error);
    if (file < 0) {
        return std::nullopt;
    }
    std::string content;
    return readUpTo(file, limit, content, error) ? std::optional(content) : std::nullopt;
}

Descriptor openCredentials(int folder, const std::string &name, std::string &error)
{
    constexpr size_t kLimit = 4096;
    std::string content;
    Descriptor copy = copyBelow(folder, name, kLimit, content, error);
    if (copy < 0 || holdsCredentials(content)) {
        return copy;
    }
    error = "holds no user name and password";
    return {};
}

/// What a directive names, ready for OpenVPN.
static Descriptor openNamed(const Directive &directive, const DirectiveRule &rule, int folder, bool folders,
                            std::string &error)
{
    constexpr size_t kLimit = 16 * 1024 * 1024; // lists of revoked certificates grow
    const std::string &word = directive.words[rule.fileWord];
    if (rule.fileKind == FileKind::Credentials) {
        return openCredentials(folder, word, error);
    }
    const bool isFolder =
        rule.fileKind == FileKind::Folder || (directive.name() == "crl-verify" && directive.words.size() > 2);
    if (!isFolder) {
        std::string content;
        return copyBelow(folder, word, kLimit, content, error);
    }
    if (!folders) {
        error = "is a folder, into which only the program's own user may let OpenVPN look";
        return {};
    }
    return openBelow(folder, word, S_IFDIR, 0, error);
}

bool openNamedFiles(std::vector<Directive> &directives, int folder, bool folders, std::string &error)
{
    for (Directive &directive : directives) {
        if (!openNamedFiles(directive.inner, folder, folders, error)) {
            return false;
        }
        const DirectiveRule rule = ruleFor(directive.name());
        if (rule.fileKind == FileKind::None || directive.isBlock() || directive.words.size() <= rule.fileWord) {
            continue;
        }
        std::string &word = directive.words[rule.fileWord];
        const bool keyword = (directive.name() == "dh" && word == "none") ||
                             (directive.name() == "http-proxy" && (word == "auto" || word == "auto-nct"));
        if (keyword) {
            continue;
        }
        Descriptor file = openNamed(directive, rule, folder, folders, error);
        if (file < 0) {
            error.insert(0, "\"" + directive.name() + "\" names " + word + ", which ");
            error = atLine(directive.line, error);
            return false;
        }
        word = descriptorPath(file.release()); // OpenVPN's from here on
    }
    return true;
}
