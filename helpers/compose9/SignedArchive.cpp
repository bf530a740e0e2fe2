#include "helpers/compose9/SignedArchive.h"

#include "helpers/compose9/Bundle.h"
#include "helpers/compose9/Signature.h"
#include "helpers/system/Descriptor.h"
#include "helpers/system/Run.h"
#include "names/Names.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

constexpr size_t kArchiveLimit = size_t(256) << 20;
constexpr size_t kTextLimit = 4096;
constexpr int kUnpackLimitMs = 300000;

/// Reads a file whole. Returns why that can not be done, or an empty text.
static std::string readFile(const std::string &path, size_t limit, std::string &bytes)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat info = {};
    if (file < 0 || fstat(file, &info) != 0) {
        return path + ": " + strerror(errno);
    }
    if (!S_ISREG(info.st_mode)) {
        return path + " is no file";
    }
    if (!readAll(file, bytes, limit + 1)) {
        return path + ": " + strerror(errno);
    }
    return bytes.size() > limit ? path + " is too long" : std::string();
}

bool needsSignature(const std::string &folder)
{
    return access((folder + kUpdateKeysFile).c_str(), F_OK) == 0;
}

/// Checks the bytes, unless a reason against them is known already.
static SignedArchive checked(SignedArchive result, const std::string &lines, const std::string &folder)
{
    std::string keys;
    if (result.reason.empty()) {
        result.reason = readFile(folder + kUpdateKeysFile, kTextLimit, keys);
    }
    if (!result.reason.empty()) {
        return result;
    }
    SignedUpdate vouched = checkSignature(keys, result.bytes, lines);
    result.version = vouched.version;
    result.reason = vouched.reason;
    const std::string installed = versionIn(folder);
    if (result.reason.empty() && isOlder(result.version, installed)) {
        result.reason = "its version " + result.version + " is older than the installed " + installed;
    }
    return result;
}

SignedArchive readSigned(const std::string &archive, const std::string &signature, const std::string &folder)
{
    SignedArchive result;
    std::string lines;
    result.reason = readFile(archive, kArchiveLimit, result.bytes);
    if (result.reason.empty()) {
        result.reason = readFile(signature, kTextLimit, lines);
    }
    return checked(std::move(result), lines, folder);
}

SignedArchive readGiven(const std::string &signature, const std::string &folder)
{
    SignedArchive result;
    if (!readAll(STDIN_FILENO, result.bytes, kArchiveLimit + 1)) {
        result.reason = std::string("the archive can not be read: ") + strerror(errno);
    } else if (result.bytes.size() > kArchiveLimit) {
        result.reason = "the archive is too long";
    }
    return checked(std::move(result), signature, folder);
}

std::string unpackSigned(const SignedArchive &archive, const std::string &tool, const std::string &folder)
{
    const Descriptor file = sealedFile(archive.bytes);
    if (file < 0) {
        return std::string("can not keep the archive in memory: ") + strerror(errno);
    }
    const RunResult result = runToEnd({tool, "-o", descriptorPath(file), "-d", folder}, {}, kUnpackLimitMs);
    return result.status == 0 ? std::string() : result.errors.substr(0, result.errors.find('\n'));
}
