#pragma once

#include <cstdint>
#include <map>
#include <string>

struct archive_entry;

/// Decides which entries of one archive may be written, and keeps the count of what they add up to.
class EntryGate
{
public:
    /// `archiveSize` is the size of the archive file in bytes, against which the unpacked size is held.
    explicit EntryGate(uint64_t archiveSize);

    /// Checks the next entry and reduces its name, to UTF-8 without backslashes, and its mode to what is to be
    /// written. Returns why the archive is refused, or an empty text. An entry whose name is left empty is the target
    /// folder itself.
    std::string admit(archive_entry *entry);

    /// Checks that one entry, of which `bytes` bytes have been unpacked by now, still fits together with those
    /// before. Returns why not, or an empty text.
    std::string grow(uint64_t bytes) const;

private:
    std::string admitName(archive_entry *entry);
    std::string addPath(const std::string &path, bool folder);

    uint64_t m_limit;
    uint64_t m_total = 0; ///< bytes of the entries before the current one, as their headers state them
    uint64_t m_current = 0;
    std::map<std::string, bool> m_isFolder; ///< every path seen, folders above it included
};
