#include "helpers/system/Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

bool writeAll(int fd, const std::string &text)
{
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = write(fd, text.data() + done, text.size() - done);
        if (n < 0 && errno != EINTR) {
            return false;
        }
        done += static_cast<size_t>(std::max<ssize_t>(n, 0));
    }
    return true;
}

bool readAll(int fd, std::string &text, size_t limit)
{
    char buffer[4096];
    while (limit > 0) {
        const ssize_t n = read(fd, buffer, std::min(limit, sizeof buffer));
        if (n == 0) {
            return true;
        }
        if (n < 0 && errno != EINTR) {
            return false;
        }
        const auto count = static_cast<size_t>(std::max<ssize_t>(n, 0));
        text.append(buffer, count);
        limit -= count;
    }
    return true;
}

Descriptor sealedFile(const std::string &content, unsigned flags)
{
    constexpr int kSeals = F_SEAL_SEAL | F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE;
    Descriptor file(memfd_create("korvan", MFD_ALLOW_SEALING | flags));
    const bool ready = file >= 0 && writeAll(file, content) && lseek(file, 0, SEEK_SET) == 0 &&
                       fchmod(file, S_IRUSR) == 0 && fcntl(file, F_ADD_SEALS, kSeals) == 0;
    return ready ? std::move(file) : Descriptor();
}

std::string descriptorPath(int fd)
{
    return "/proc/self/fd/" + std::to_string(fd);
}
