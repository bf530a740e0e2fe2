#include "helpers/network/NameServers.h"

#include "helpers/system/Descriptor.h"
#include "helpers/system/ReplaceFile.h"
#include "helpers/system/Run.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char kFile[] = "/etc/resolv.conf";
/// The file before, beside it, so that one step puts it back. None where there was none.
constexpr char kSaved[] = "/etc/resolv.conf.korvan";
const std::string kOurs = std::string("# Korvan's tunnel; the file before: ") + kSaved + "\n";

constexpr char kResolvectl[] = "/usr/bin/resolvectl";

std::string content(const std::string &path)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    std::string text;
    return file >= 0 && readAll(file, text, 65536) ? text : std::string();
}

bool isOurs()
{
    return content(kFile).rfind(kOurs, 0) == 0;
}

bool overwrite(const std::string &path, const std::string &text)
{
    const mode_t mask = umask(022); // OpenVPN's scripts inherit one that would hide the file from everybody
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0644));
    umask(mask);
    return file >= 0 && writeAll(file, text);
}

std::string lines(const Offer &offer)
{
    std::string text;
    for (const std::string &domain : offer.domains) {
        text += (text.empty() ? "search " : " ") + domain;
    }
    text += text.empty() ? "" : "\n";
    for (const std::string &address : offer.nameServers) {
        text += "nameserver " + address + "\n";
    }
    return text;
}

bool isTool(const char *path)
{
    return access(path, X_OK) == 0;
}

/// The file behind links; empty where there is none.
std::string target(const char *path)
{
    char whole[PATH_MAX] = "";
    return realpath(path, whole) != nullptr ? whole : "";
}

bool isResolved()
{
    const std::string path = target(kFile);
    return isTool(kResolvectl) && access("/run/systemd/resolve", F_OK) == 0 &&
           (path.rfind("/run/systemd/resolve/", 0) == 0 ||
            content(kFile).find("nameserver 127.0.0.53") != std::string::npos);
}

bool setWithResolved(const Offer &offer)
{
    std::vector<std::string> dns = {kResolvectl, "dns", offer.device};
    dns.insert(dns.end(), offer.nameServers.begin(), offer.nameServers.end());
    std::vector<std::string> domain = {kResolvectl, "domain", offer.device};
    domain.insert(domain.end(), offer.domains.begin(), offer.domains.end());
    domain.emplace_back("~.");
    return runToEnd(dns, {}, 5000).status == 0 && runToEnd(domain, {}, 5000).status == 0;
}

/// The tool, or an empty text. systemd-resolved brings one of that name, which sets what nobody asks for here.
std::string resolvconf()
{
    for (const char *path : {"/usr/sbin/resolvconf", "/usr/bin/resolvconf"}) {
        if (isTool(path) && target(path) != kResolvectl) {
            return path;
        }
    }
    return {};
}

} // namespace

bool setNameServerFile(const Offer &offer)
{
    const std::string text = kOurs + lines(offer);
    if (isOurs()) {
        return content(kFile) == text || overwrite(kFile, text);
    }
    unlink(kSaved);
    if (linkat(AT_FDCWD, kFile, AT_FDCWD, kSaved, 0) == 0) { // a link is kept as a link
        return replaceFile(AT_FDCWD, kFile, text, 0644);
    }
    // What is mounted can only be overwritten.
    return (errno == ENOENT || overwrite(kSaved, content(kFile))) && overwrite(kFile, text);
}

void restoreNameServerFile()
{
    const bool done = !isOurs() || rename(kSaved, kFile) == 0 ||
                      (errno == ENOENT ? unlink(kFile) == 0 : overwrite(kFile, content(kSaved)));
    if (done) { // else the copy is all that is left of it
        unlink(kSaved);
    }
}

Resolver setNameServers(const Offer &offer)
{
    if (isResolved() && setWithResolved(offer)) {
        return Resolver::Resolved;
    }
    if (!resolvconf().empty() &&
        runToEnd({resolvconf(), "-a", offer.device + ".openvpn"}, lines(offer)).status == 0) {
        return Resolver::Resolvconf;
    }
    return setNameServerFile(offer) ? Resolver::File : Resolver::None;
}

void dropNameServers(Resolver resolver, const std::string &device)
{
    if (resolver == Resolver::Resolved) {
        runToEnd({kResolvectl, "revert", device}, {}, 5000);
    } else if (resolver == Resolver::Resolvconf) {
        runToEnd({resolvconf(), "-d", device + ".openvpn"});
    }
}
