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
    if (!readAll(file, content, limit + 1)) {
        error = std::string("can not be read: ") + std::strerror(errno);
        return std::nullopt;
    }
    if (content.size() > limit) {
        error = "is larger than " + std::to_string(limit / 1024) + " KB";
        return std::nullopt;
    }
    return content;
}

Descriptor openCredentials(int folder, const std::string &name, std::string &error)
{
    constexpr size_t kLimit = 4096;
    Descriptor file = openBelow(folder, name, S_IFREG, 0, error);
    std::string content;
    if (file < 0 || (readAll(file, content, kLimit) && holdsCredentials(content))) {
        return file;
    }
    error = "holds no user name and password";
    return {};
}

bool openNamedFiles(std::vector<Directive> &directives, int folder, std::string &error)
{
    for (Directive &directive : directives) {
        if (!openNamedFiles(directive.inner, folder, error)) {
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
        const bool isFolder =
            rule.fileKind == FileKind::Folder || (directive.name() == "crl-verify" && directive.words.size() > 2);
        Descriptor file = rule.fileKind == FileKind::Credentials
                              ? openCredentials(folder, word, error)
                              : openBelow(folder, word, isFolder ? S_IFDIR : S_IFREG, 0, error);
        if (file < 0) {
            error.insert(0, "\"" + directive.name() + "\" names " + word + ", which ");
            error = atLine(directive.line, error);
            return false;
        }
        word = descriptorPath(file.release()); // OpenVPN's from here on
    }
    return true;
}
