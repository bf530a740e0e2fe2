#pragma once

#include <string>

enum class ArchiveFormat { Zip, SevenZip };

/// Unpacks an archive into a folder, which is created when missing; existing files are replaced. The whole directory
/// of the archive is checked before the first file is written: names that leave the folder, links, devices and
/// archives that are out of proportion are refused. Of files with the same name the last one stays. Modes are 0755
/// and 0644 within the caller's umask. Makes the folder the process's working folder. Returns an empty text, or the
/// reason why the archive was refused or could not be unpacked to its end; what was written before a damaged place
/// stays.
std::string unpack(const std::string &archive, ArchiveFormat format, const std::string &folder);
