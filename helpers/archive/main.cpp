#include "helpers/archive/Unpack.h"

#include <clocale>
#include <cstdio>
#include <cstring>
#include <sys/resource.h>

/// A header can ask for a dictionary of gigabytes, and a damaged stream could keep a decoder busy for ever.
static void limitResources()
{
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    constexpr rlim_t kMaxMemory = rlim_t(1) << 30;
    constexpr rlim_t kMaxSeconds = 300;
    const rlimit memory = {kMaxMemory, kMaxMemory};
    const rlimit time = {kMaxSeconds, kMaxSeconds};
    setrlimit(RLIMIT_AS, &memory);
    setrlimit(RLIMIT_CPU, &time);
#endif
}

/// Unpacks an archive safely. Installed under two names, each with the command line of the tool it stands for:
/// `compose7 -o ARCHIVE -d FOLDER` for ZIP and `compose6 x -oFOLDER -y ARCHIVE` for 7z. Exit status 0, 1 with one
/// line on standard error when the archive is refused or damaged, or 2 for any other command line.
int main(int argc, char *argv[])
{
    const char *slash = strrchr(argv[0], '/');
    const std::string self = slash ? slash + 1 : argv[0];
    std::string archive;
    std::string folder;
    ArchiveFormat format = ArchiveFormat::Zip;
    if (self == "compose7" && argc == 5 && strcmp(argv[1], "-o") == 0 && strcmp(argv[3], "-d") == 0) {
        archive = argv[2];
        folder = argv[4];
    } else if (self == "compose6" && argc == 5 && strcmp(argv[1], "x") == 0 && strncmp(argv[2], "-o", 2) == 0 &&
               strcmp(argv[3], "-y") == 0) {
        archive = argv[4];
        folder = argv[2] + 2;
        format = ArchiveFormat::SevenZip;
    } else {
        fputs("usage: compose7 -o ARCHIVE -d FOLDER | compose6 x -oFOLDER -y ARCHIVE\n", stderr);
        return 2;
    }
    // Names that are marked as UTF-8 are converted to the locale's encoding.
    setlocale(LC_CTYPE, "C.UTF-8");
    limitResources();
    const std::string reason = unpack(archive, format, folder);
    if (reason.empty()) {
        return 0;
    }
    fprintf(stderr, "%s: can not unpack %s: %s\n", self.c_str(), archive.c_str(), reason.c_str());
    return 1;
}
