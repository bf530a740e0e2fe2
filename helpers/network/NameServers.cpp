#include "helpers/network/NameServers.h"

#include "helpers/system/Descriptor.h"
#include "helpers/system/ReplaceFile.h"
#include "helpers/system/Run.h"
#include "names/Names.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char kFile[] = "/etc/resolv.conf";
/// The file before, beside it, so that one step puts it back.
constexpr char kSaved[] = "/etc/resolv.conf.korvan";
/// The same where the file can only be overwritten, as one that is mounted.
const std::string kCopy = std::string(kJournalFolder) + "/resolv.conf";
const std::string kOurs = "# Korvan's tunnel; ";
const std::string kBefore = kOurs + "the file before: ";
const std::string kNoneBefore = kOurs + "there was no file before";

constexpr char kResolvectl[] = "/usr/bin/resolvectl";
constexpr char kResolvconf[] = "/usr/sbin/resolvconf";

std::string content(const std::string &path)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    std::string text;
    return file >= 0 && readAll(file, text, 65536) ? text : std::string();
}

/// The first line of the file itself; nothing of one behind a link.
std::string mark()
{
    struct stat status = {};
    if (lstat(kFile, &status) != 0 || !S_ISREG(status.st_mode)) {
        return {};
    }
    const std::string text = content(kFile);
    return text.substr(0, text.find('\n'));
}

bool overwrite(const std::string &path, const std::string &text)
{
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0644));
    return file >= 0 && writeAll(file, text);
}

std::string lines(const NameServers &servers)
{
    std::string text;
    for (const std::string &domain : servers.domains) {
        text += (text.empty() ? "search " : " ") + domain;
    }
    text += text.empty() ? "" : "\n";
    for (const std::string &address : servers.addresses) {
        text += "nameserver " + address + "\n";
    }
    return text;
}

bool isTool(const char *path)
{
    return access(path, X_OK) == 0;
}

bool isResolved()
{
    char target[4096] = "";
    const std::string path = realpath(kFile, target) != nullptr ? target : "";
    return isTool(kResolvectl) && access("/run/systemd/resolve", F_OK) == 0 &&
           (path.rfind("/run/systemd/resolve/", 0) == 0 ||
            content(kFile).find("nameserver 127.0.0.53") != std::string::npos);
}

bool setWithResolved(const std::string &device, const NameServers &servers)
{
    std::vector<std::string> dns = {kResolvectl, "dns", device};
    dns.insert(dns.end(), servers.addresses.begin(), servers.addresses.end());
    std::vector<std::string> domain = {kResolvectl, "domain", device};
    domain.insert(domain.end(), servers.domains.begin(), servers.domains.end());
    domain.emplace_back("~.");
    return runToEnd(dns, {}, 5000).status == 0 && runToEnd(domain, {}, 5000).status == 0;
}

const char *resolvconf()
{
    return isTool(kResolvconf) ? kResolvconf : "/usr/bin/resolvconf";
}

} // namespace

bool setNameServerFile(const NameServers &servers)
{
    const std::string first = mark();
    if (first.rfind(kOurs, 0) == 0) {
        const std::string text = first + "\n" + lines(servers);
        return content(kFile) == text || overwrite(kFile, text);
    }
    // A link is kept as a link.
    unlink(kSaved);
    if (linkat(AT_FDCWD, kFile, AT_FDCWD, kSaved, 0) == 0) {
        if (replaceFile(AT_FDCWD, kFile, kBefore + kSaved + "\n" + lines(servers), 0644)) {
            return true;
        }
        unlink(kSaved);
    }
    struct stat status = {};
    if (lstat(kFile, &status) != 0) {
        return errno == ENOENT && overwrite(kFile, kNoneBefore + "\n" + lines(servers));
    }
    return S_ISREG(status.st_mode) && overwrite(kCopy, content(kFile)) &&
           overwrite(kFile, kBefore + kCopy + "\n" + lines(servers));
}

void restoreNameServerFile()
{
    const std::string first = mark();
    bool done = true;
    if (first == kBefore + kSaved) {
        done = rename(kSaved, kFile) == 0;
    } else if (first == kBefore + kCopy) {
        done = access(kCopy.c_str(), R_OK) == 0 && overwrite(kFile, content(kCopy));
    } else if (first == kNoneBefore) {
        done = unlink(kFile) == 0;
    }
    if (done) { // else the copy is all that is left of it
        unlink(kSaved);
        unlink(kCopy.c_str());
    }
}

Resolver setNameServers(const std::string &device, const NameServers &servers)
{
    if (isResolved() && setWithResolved(device, servers)) {
        return Resolver::Resolved;
    }
    if (isTool(resolvconf()) && runToEnd({resolvconf(), "-a", device + ".openvpn"}, lines(servers)).status == 0) {
        return Resolver::Resolvconf;
    }
    return setNameServerFile(servers) ? Resolver::File : Resolver::None;
}

void dropNameServers(Resolver resolver, const std::string &device)
{
    if (resolver == Resolver::Resolved) {
        runToEnd({kResolvectl, "revert", device}, {}, 5000);
    } else if (resolver == Resolver::Resolvconf) {
        runToEnd({resolvconf(), "-d", device + ".openvpn"});
    }
}
