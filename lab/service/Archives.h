#pragma once

#include <filesystem>
#include <string>

/// An update of the program, as its description offers it.
struct Offer
{
    std::string version;
    std::string signature; ///< of its archive, minisign's four lines; empty when the archive is not signed
};

/// The newest of the archives "korvan-VERSION.zip" in the folder; `version`, unsigned, where there is none.
Offer newestOffer(const std::string &folder, const std::string &version);

/// The bytes of the file with this name in the folder; empty when there is none.
std::string archiveBytes(const std::string &folder, const std::string &name);

/// The bytes of a file; empty when it can not be read.
std::string fileBytes(const std::filesystem::path &path);
