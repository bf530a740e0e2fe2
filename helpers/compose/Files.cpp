#include "helpers/compose/Files.h"

#include "helpers/compose/DirectiveRules.h"
#include "helpers/compose/ProfileFilter.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// Opens `name` below the folder for reading, never leaving the folder, not even through links.
int openBelow(int folder, const std::string &name, mode_t type, unsigned resolve, std::string &error)
{
    open_how how = {};
    how.flags = O_RDONLY | O_NONBLOCK | O_NOCTTY;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS | resolve;
    const int descriptor = static_cast<int>(syscall(SYS_openat2, folder, name.c_str(), &how, sizeof(how)));
    if (descriptor < 0) {
        const bool escapes = errno == EXDEV || errno == ELOOP;
        error = escapes ? "leads out of its folder through a link"
                        : std::string("can not be opened: ") + std::strerror(errno);
        return -1;
    }
    struct stat status = {};
    if (fstat(descriptor, &status) != 0 || (status.st_mode & S_IFMT) != type) {
        error = type == S_IFDIR ? "is not a folder" : "is not a regular file";
        close(descriptor);
        return -1;
    }
    return descriptor;
}

/// Up to `limit` + 1 bytes from the start, so that a caller can tell that there are too many.
std::string readUpTo(int descriptor, size_t limit)
{
    std::string content(limit + 1, '\0');
    size_t length = 0;
    while (length < content.size()) {
        const ssize_t count =
            pread(descriptor, content.data() + length, content.size() - length, static_cast<off_t>(length));
        if (count <= 0) {
            break;
        }
        length += static_cast<size_t>(count);
    }
    content.resize(length);
    return content;
}

} // namespace

int openFolder(const std::string &path, std::string &error)
{
    const int descriptor = open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) {
        error = path + ": " + std::strerror(errno);
    }
    return descriptor;
}

std::optional<std::string> readFile(int folder, const std::string &name, size_t limit, std::string &error)
{
    const int descriptor = openBelow(folder, name, S_IFREG, RESOLVE_NO_SYMLINKS, error);
    if (descriptor < 0) {
        return std::nullopt;
    }
    std::string content = readUpTo(descriptor, limit);
    close(descriptor);
    if (content.size() > limit) {
        error = "is larger than " + std::to_string(limit / 1024) + " KB";
        return std::nullopt;
    }
    return content;
}

int sealedCopy(const std::string &content)
{
    const int descriptor = memfd_create("korvan", MFD_ALLOW_SEALING);
    if (descriptor < 0) {
        return -1;
    }
    size_t written = 0;
    while (written < content.size()) {
        const ssize_t count = write(descriptor, content.data() + written, content.size() - written);
        if (count <= 0) {
            break;
        }
        written += static_cast<size_t>(count);
    }
    // OpenVPN warns about files that others may read.
    if (written == content.size() && fchmod(descriptor, S_IRUSR) == 0 &&
        fcntl(descriptor, F_ADD_SEALS, F_SEAL_SEAL | F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE) == 0) {
        return descriptor;
    }
    close(descriptor);
    return -1;
}

std::string descriptorPath(int descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor);
}

int openCredentials(int folder, const std::string &name, std::string &error)
{
    constexpr size_t kLimit = 4096;
    const int descriptor = openBelow(folder, name, S_IFREG, 0, error);
    if (descriptor >= 0 && !holdsCredentials(readUpTo(descriptor, kLimit))) {
        error = "holds no user name and password";
        close(descriptor);
        return -1;
    }
    return descriptor;
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
        const int descriptor = rule.fileKind == FileKind::Credentials
                                   ? openCredentials(folder, word, error)
                                   : openBelow(folder, word, isFolder ? S_IFDIR : S_IFREG, 0, error);
        if (descriptor < 0) {
            error.insert(0, "\"" + directive.name() + "\" names " + word + ", which ");
            error = atLine(directive.line, error);
            return false;
        }
        word = descriptorPath(descriptor);
    }
    return true;
}
