#pragma once

#include "helpers/compose/Profile.h"
#include "helpers/system/Descriptor.h"

/// Opens a folder by its path. -1, and a reason, when it is not there.
Descriptor openFolder(const std::string &path, std::string &error);

/// Reads a regular file below an open folder, its name given relative to it, without following any link. Nothing, and
/// a reason, when it is missing, not a regular file, or larger than `limit` bytes.
std::optional<std::string> readFile(int folder, const std::string &name, size_t limit, std::string &error);

/// Copies every file that the directives name, below the folder, and puts the names of the copies' descriptors in
/// place of the files', so that OpenVPN reads what was there now, whatever becomes of it. Links are followed as long
/// as they stay in the folder. A folder is handed over as it is, and refused unless `folders`: OpenVPN looks into it
/// by itself. False, with a reason that names line and file, when one is missing or lies outside.
bool openNamedFiles(std::vector<Directive> &directives, int folder, bool folders, std::string &error);

/// A copy of a file with a user name and a password below the folder; -1, and a reason, when it is missing or
/// incomplete.
Descriptor openCredentials(int folder, const std::string &name, std::string &error);
