#include "helpers/archive/EntryGate.h"

#include "helpers/system/Checks.h"

#include <algorithm>
#include <archive_entry.h>
#include <iconv.h>

/// A profile holds one small file a server, a program update some hundred files.
constexpr size_t kMaxEntries = 20000;
constexpr uint64_t kMaxBytes = uint64_t(1) << 30;
/// Archives of real files shrink a hundredfold at best; this much may be unpacked without a look at the ratio.
constexpr uint64_t kMaxRatio = 200;
constexpr uint64_t kFreeBytes = uint64_t(64) << 20;
constexpr size_t kMaxNameLength = 1024;

/// The name for a message line: control characters would let an archive write lines of its own, and move the cursor.
static std::string quoted(const std::string &name)
{
    std::string text = name.substr(0, 100);
    std::replace_if(text.begin(), text.end(), isControl, '?');
    return "\"" + text + "\"";
}

EntryGate::EntryGate(uint64_t archiveSize) : m_limit(std::min(kMaxBytes, kFreeBytes + kMaxRatio * archiveSize)) {}

std::string EntryGate::grow(uint64_t bytes) const
{
    if (bytes <= m_limit && m_total <= m_limit - bytes) {
        return {};
    }
    return "it unpacks to more than " + std::to_string(m_limit >> 20) + " MB, which is out of proportion";
}

std::string EntryGate::addPath(const std::string &path, bool folder)
{
    const auto [place, isNew] = m_isFolder.emplace(path, folder);
    if (!isNew && place->second != folder) {
        return quoted(path) + " is both a file and a folder";
    }
    if (m_isFolder.size() > kMaxEntries) {
        return "it has more than " + std::to_string(kMaxEntries) + " entries";
    }
    return {};
}

/// The name in UTF-8, with "/" between its steps: ZIP's names are in code page 437 unless marked, and other systems
/// write "\\". Empty when it can not be read.
static std::string readable(std::string name)
{
    if (!isUtf8(name)) {
        std::string converted(4 * name.size(), '\0');
        const iconv_t conversion = iconv_open("UTF-8", "CP437");
        char *from = name.data();
        char *to = converted.data();
        size_t left = name.size();
        size_t space = converted.size();
        const bool done = iconv(conversion, &from, &left, &to, &space) != static_cast<size_t>(-1);
        iconv_close(conversion);
        name = done ? converted.substr(0, converted.size() - space) : std::string();
    }
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

/// Why a stored name can not be used at all, or an empty text.
static std::string badName(const std::string &name)
{
    if (name.empty()) {
        return "an entry has no readable name";
    }
    if (name.size() > kMaxNameLength) {
        return quoted(name) + "... is too long a name";
    }
    if (hasControl(name)) {
        return quoted(name) + " has control characters in its name";
    }
    if (name.front() == '/') {
        return quoted(name) + " has an absolute path";
    }
    return {};
}

std::string EntryGate::admitName(archive_entry *entry)
{
    const char *stored = archive_entry_pathname(entry);
    const std::string name = readable(stored ? stored : "");
    std::string reason = badName(name);
    std::string path;
    for (size_t begin = 0, end = 0; reason.empty() && begin < name.size(); begin = end + 1) {
        end = std::min(name.find('/', begin), name.size());
        const std::string step = name.substr(begin, end - begin);
        if (step.empty() || step == ".") {
            continue;
        }
        if (step == "..") {
            return quoted(name) + " leaves the target folder";
        }
        if (!path.empty()) {
            reason = addPath(path, true);
            path += '/';
        }
        path += step;
    }
    if (!reason.empty()) {
        return reason;
    }
    if (name.back() == '/') {
        archive_entry_set_filetype(entry, AE_IFDIR);
    }
    const bool folder = archive_entry_filetype(entry) == AE_IFDIR;
    archive_entry_copy_pathname(entry, path.c_str());
    if (path.empty()) {
        return folder ? std::string() : quoted(name) + " is a file without a name";
    }
    return addPath(path, folder);
}

std::string EntryGate::admit(archive_entry *entry)
{
    if (std::string reason = admitName(entry); !reason.empty()) {
        return reason;
    }
    const auto type = archive_entry_filetype(entry);
    const std::string name = archive_entry_pathname(entry);
    if (type == AE_IFLNK || archive_entry_symlink(entry) || archive_entry_hardlink(entry)) {
        return quoted(name) + " is a link";
    }
    if (type != AE_IFREG && type != AE_IFDIR) {
        return quoted(name) + " is neither a file nor a folder";
    }
    const bool executable = type == AE_IFDIR || (archive_entry_perm(entry) & 0100);
    archive_entry_set_perm(entry, executable ? 0755 : 0644);

    m_total += m_current;
    m_current = 0;
    if (type == AE_IFDIR) {
        return {};
    }
    const auto size = static_cast<uint64_t>(std::max<int64_t>(0, archive_entry_size(entry)));
    std::string reason = grow(size);
    m_current = size;
    return reason;
}
