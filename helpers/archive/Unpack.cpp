#include "helpers/archive/Unpack.h"

#include "helpers/archive/EntryGate.h"

#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

using Reader = std::unique_ptr<archive, decltype(&archive_read_free)>;
using Writer = std::unique_ptr<archive, decltype(&archive_write_free)>;

constexpr size_t kBlockSize = 65536;

static std::string problem(archive *a)
{
    const char *text = archive_error_string(a);
    return text ? std::string(text, strcspn(text, "\n")) : "it is damaged";
}

/// With the system's reason, such as a full disk, by which what went wrong here is told from a damaged archive.
static std::string writeProblem(archive *writer)
{
    const int code = archive_errno(writer);
    return code > 0 ? problem(writer) + ": " + strerror(code) : problem(writer);
}

/// A reader at the beginning of the archive; null when the file is no archive of this format. ZIP is read by its
/// directory at the end only, so that an archive that was cut short is refused whole.
static Reader openReader(int fd, ArchiveFormat format)
{
    Reader reader(archive_read_new(), &archive_read_free);
    if (format == ArchiveFormat::Zip) {
        archive_read_support_format_zip_seekable(reader.get());
    } else {
        archive_read_support_format_7zip(reader.get());
    }
    lseek(fd, 0, SEEK_SET);
    if (archive_read_open_fd(reader.get(), fd, kBlockSize) != ARCHIVE_OK) {
        return {nullptr, &archive_read_free};
    }
    return reader;
}

static std::string writeEntry(archive *reader, archive *writer, archive_entry *entry, const EntryGate &gate)
{
    if (archive_write_header(writer, entry) != ARCHIVE_OK) {
        return writeProblem(writer);
    }
    const void *block = nullptr;
    size_t size = 0;
    la_int64_t offset = 0;
    int status = ARCHIVE_OK;
    while ((status = archive_read_data_block(reader, &block, &size, &offset)) == ARCHIVE_OK) {
        if (std::string reason = gate.grow(static_cast<uint64_t>(offset) + size); !reason.empty()) {
            return reason;
        }
        if (archive_write_data_block(writer, block, size, offset) != ARCHIVE_OK) {
            return writeProblem(writer);
        }
    }
    if (status != ARCHIVE_EOF) {
        return problem(reader);
    }
    return archive_write_finish_entry(writer) == ARCHIVE_OK ? std::string() : writeProblem(writer);
}

/// Goes through the archive from its beginning: checks every entry and, with a writer, writes it.
static std::string walk(int fd, ArchiveFormat format, uint64_t archiveSize, archive *writer)
{
    const Reader reader = openReader(fd, format);
    if (!reader) {
        return std::string("it is no ") + (format == ArchiveFormat::Zip ? "ZIP" : "7z") +
               " archive, or was cut short";
    }
    EntryGate gate(archiveSize);
    archive_entry *entry = nullptr;
    int status = ARCHIVE_OK;
    while ((status = archive_read_next_header(reader.get(), &entry)) == ARCHIVE_OK) {
        std::string reason = gate.admit(entry);
        if (!reason.empty()) {
            return reason;
        }
        const std::string name = archive_entry_pathname(entry);
        if (!writer || name.empty()) {
            continue;
        }
        reason = writeEntry(reader.get(), writer, entry, gate);
        if (!reason.empty()) {
            unlink(name.c_str());
            return reason.insert(0, "\"" + name + "\": ");
        }
    }
    if (status != ARCHIVE_EOF) {
        return problem(reader.get());
    }
    return writer && archive_write_close(writer) != ARCHIVE_OK ? writeProblem(writer) : std::string();
}

static std::string enterFolder(const std::string &folder)
{
    if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) {
        return folder + ": " + strerror(errno);
    }
    return chdir(folder.c_str()) == 0 ? std::string() : folder + ": " + strerror(errno);
}

std::string unpack(const std::string &archive, ArchiveFormat format, const std::string &folder)
{
    const int fd = open(archive.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat info = {};
    if (fd < 0 || fstat(fd, &info) != 0) {
        return strerror(errno);
    }
    if (!S_ISREG(info.st_mode)) {
        return "it is no file";
    }
    const auto size = static_cast<uint64_t>(info.st_size);
    std::string reason = walk(fd, format, size, nullptr);
    if (reason.empty()) {
        reason = enterFolder(folder);
    }
    if (reason.empty()) {
        const Writer writer(archive_write_disk_new(), &archive_write_free);
        archive_write_disk_set_options(writer.get(), ARCHIVE_EXTRACT_SECURE_SYMLINKS |
                                                         ARCHIVE_EXTRACT_SECURE_NODOTDOT |
                                                         ARCHIVE_EXTRACT_SECURE_NOABSOLUTEPATHS);
        reason = walk(fd, format, size, writer.get());
    }
    close(fd);
    return reason;
}
