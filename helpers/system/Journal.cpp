#include "helpers/system/Journal.h"

#include "helpers/system/Descriptor.h"
#include "helpers/system/ReplaceFile.h"
#include "names/Names.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

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
Descriptor openFolder()
{
    Descriptor folder(open(kJournalFolder, O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    return folder < 0 || isOursAlone(folder) ? std::move(folder) : Descriptor();
}

} // namespace

JournalText readJournal(const std::string &name)
{
    const Descriptor folder = openFolder();
    if (folder < 0) {
        return {errno == ENOENT ? JournalText::State::Missing : JournalText::State::Refused, {}, reasonFor({})};
    }
    const Descriptor file(openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
    if (file < 0 || !isOursAlone(file)) {
        return {errno == ENOENT ? JournalText::State::Missing : JournalText::State::Refused, {}, reasonFor(name)};
    }
    JournalText journal{JournalText::State::Read, {}, {}};
    if (!readAll(file, journal.text)) {
        return {JournalText::State::Refused, {}, reasonFor(name)};
    }
    return journal;
}

std::string writeJournal(const std::string &name, const std::string &text)
{
    mkdir(kJournalFolder, 0700);
    const Descriptor folder = openFolder();
    if (folder < 0) {
        return reasonFor({});
    }
    return replaceFile(folder, name, text) ? std::string() : reasonFor(name);
}

std::string removeJournal(const std::string &name)
{
    const Descriptor folder = openFolder();
    if (folder < 0) {
        return errno == ENOENT ? std::string() : reasonFor({});
    }
    return unlinkat(folder, name.c_str(), 0) == 0 || errno == ENOENT ? std::string() : reasonFor(name);
}

JournalLock::JournalLock(const std::string &name, bool waits)
{
    mkdir(kJournalFolder, 0700);
    const Descriptor folder = openFolder();
    if (folder < 0) {
        return;
    }
    m_file = Descriptor(openat(folder, name.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
    while (m_file >= 0 && flock(m_file, waits ? LOCK_EX : LOCK_EX | LOCK_NB) != 0) {
        if (errno != EINTR) {
            m_file = Descriptor();
        }
    }
}
