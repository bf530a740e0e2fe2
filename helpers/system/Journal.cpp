#include "helpers/system/Journal.h"
#include "helpers/LockDown.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A descriptor that closes itself.
class Descriptor
{
public:
    explicit Descriptor(int fd) : m_fd(fd) {}
    ~Descriptor() { close(m_fd); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    operator int() const { return m_fd; }

private:
    int m_fd;
};

std::string reasonFor(const std::string &name)
{
    const char *reason = errno == ELOOP || errno == ENOTDIR ? "is a link or no folder" : std::strerror(errno);
    return std::string(kJournalFolder) + (name.empty() ? "" : "/" + name) + ": " + reason;
}

/// Only what this user alone can write is believed; errno is EPERM otherwise.
bool isOursAlone(int fd)
{
    struct stat info;
    if (fstat(fd, &info) != 0) {
        return false;
    }
    errno = EPERM;
    return info.st_uid == geteuid() && (info.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

/// The folder, opened, or -1 with errno set.
int openFolder()
{
    const int fd = open(kJournalFolder, O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (fd >= 0 && !isOursAlone(fd)) {
        close(fd);
        errno = EPERM;
        return -1;
    }
    return fd;
}

bool writeAll(int fd, const std::string &text)
{
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = write(fd, text.data() + done, text.size() - done);
        if (n < 0) {
            return false;
        }
        done += static_cast<size_t>(n);
    }
    return fsync(fd) == 0;
}

} // namespace

JournalText readJournal(const std::string &name)
{
    const Descriptor folder(openFolder());
    if (folder < 0) {
        return {errno == ENOENT ? JournalText::State::Missing : JournalText::State::Refused, {}, reasonFor({})};
    }
    const Descriptor file(openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
    if (file < 0 || !isOursAlone(file)) {
        return {errno == ENOENT ? JournalText::State::Missing : JournalText::State::Refused, {}, reasonFor(name)};
    }
    JournalText journal{JournalText::State::Read, {}, {}};
    char buffer[4096];
    ssize_t n = 0;
    while ((n = read(file, buffer, sizeof buffer)) > 0) {
        journal.text.append(buffer, static_cast<size_t>(n));
    }
    if (n < 0) {
        return {JournalText::State::Refused, {}, reasonFor(name)};
    }
    return journal;
}

std::string writeJournal(const std::string &name, const std::string &text)
{
    mkdir(kJournalFolder, 0700);
    const Descriptor folder(openFolder());
    if (folder < 0) {
        return reasonFor({});
    }
    const std::string draft = "." + name + ".new";
    unlinkat(folder, draft.c_str(), 0);
    const Descriptor file(openat(folder, draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (file < 0 || !writeAll(file, text) || renameat(folder, draft.c_str(), folder, name.c_str()) != 0) {
        return reasonFor(name);
    }
    return {};
}

std::string removeJournal(const std::string &name)
{
    const Descriptor folder(openFolder());
    if (folder < 0) {
        return errno == ENOENT ? std::string() : reasonFor({});
    }
    return unlinkat(folder, name.c_str(), 0) == 0 || errno == ENOENT ? std::string() : reasonFor(name);
}

JournalLock::JournalLock(const std::string &name) : m_fd(-1)
{
    mkdir(kJournalFolder, 0700);
    const Descriptor folder(openFolder());
    if (folder < 0) {
        return;
    }
    m_fd = openat(folder, name.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    while (m_fd >= 0 && flock(m_fd, LOCK_EX) != 0 && errno == EINTR) {
    }
}

JournalLock::~JournalLock()
{
    close(m_fd);
}
