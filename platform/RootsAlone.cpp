#include "platform/RootsAlone.h"

#include <cstdlib>
#include <string>
#include <sys/stat.h>

bool isRootsAlone(const char *path)
{
    char *whole = realpath(path, nullptr);
    if (whole == nullptr) {
        return false;
    }
    std::string place = whole;
    std::free(whole);
    for (;;) {
        struct stat info = {};
        if (lstat(place.empty() ? "/" : place.c_str(), &info) != 0 || info.st_uid != 0 ||
            (info.st_mode & (S_IWGRP | S_IWOTH)) != 0) {
            return false;
        }
        if (place.empty()) {
            return true;
        }
        place.erase(place.rfind('/'));
    }
}
