#include "lab/service/Archives.h"

#include <cstring>
#include <fstream>
#include <iterator>

static const std::string kBegin = "korvan-";
static const std::string kEnd = ".zip";

Offer newestOffer(const std::string &folder, const std::string &version)
{
    Offer newest;
    std::error_code failure;
    for (const auto &entry : std::filesystem::directory_iterator(folder, failure)) {
        const std::string name = entry.path().filename().string();
        if (name.compare(0, kBegin.size(), kBegin) != 0 || entry.path().extension() != kEnd) {
            continue;
        }
        const std::string offered = name.substr(kBegin.size(), name.size() - kBegin.size() - kEnd.size());
        if (newest.version.empty() || strverscmp(offered.c_str(), newest.version.c_str()) > 0) {
            newest = {offered, fileBytes(entry.path().string() + ".minisig")};
        }
    }
    return newest.version.empty() ? Offer{version, {}} : newest;
}

std::string archiveBytes(const std::string &folder, const std::string &name)
{
    // The name came from outside: it names one file, never a path.
    return name.find('/') == std::string::npos ? fileBytes(std::filesystem::path(folder) / name) : std::string();
}

std::string fileBytes(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
