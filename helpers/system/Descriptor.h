#pragma once

#include <string>
#include <unistd.h>
#include <utility>

/// An open file that closes itself.
class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int fd) : m_fd(fd) {}
    Descriptor(Descriptor &&other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor()
    {
        if (m_fd >= 0) {
            close(m_fd);
        }
    }

    operator int() const { return m_fd; }

    /// Gives the file up; from now on the caller closes it.
    int release() { return std::exchange(m_fd, -1); }

private:
    int m_fd = -1;
};

/// Writes the whole text. False, with errno set, on a failure.
bool writeAll(int fd, const std::string &text);

/// Appends to `text` what can be read from here on, up to `limit` bytes. False, with errno set, on a failure.
bool readAll(int fd, std::string &text, size_t limit = std::string::npos);

/// An anonymous file in memory with this content and nothing else, which nobody can change any more and only its
/// owner may open anew; it stands at its beginning. Programs that this process becomes inherit it unless `flags` is
/// MFD_CLOEXEC. -1, with errno set, on a failure.
Descriptor sealedFile(const std::string &content, unsigned flags = 0);

/// The name under which a process finds its own descriptor.
std::string descriptorPath(int fd);
