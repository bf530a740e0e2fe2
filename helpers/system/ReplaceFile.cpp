#include "helpers/system/ReplaceFile.h"

#include "helpers/system/Descriptor.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>

/// A name of this process's own beside the file, which programs that read the folder pass over.
static std::string draftOf(const std::string &path)
{
    const size_t name = path.rfind('/') + 1; // 0 without a folder
    return path.substr(0, name) + "." + path.substr(name) + "." + std::to_string(getpid()) + "~";
}

bool replaceFile(int folder, const std::string &path, const std::string &text, mode_t mode)
{
    const std::string draft = draftOf(path);
    unlinkat(folder, draft.c_str(), 0); // of a process that had this number and was killed
    const Descriptor file(openat(folder, draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (file < 0) {
        return false;
    }
    if (writeAll(file, text) && fchmod(file, mode) == 0 && fsync(file) == 0 &&
        renameat(folder, draft.c_str(), folder, path.c_str()) == 0) {
        return true;
    }
    const int reason = errno;
    unlinkat(folder, draft.c_str(), 0);
    errno = reason;
    return false;
}
