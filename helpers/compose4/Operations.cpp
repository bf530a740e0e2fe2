#include "helpers/compose4/Operations.h"

#include "helpers/compose4/DialFailure.h"
#include "helpers/compose4/PluginKey.h"
#include "helpers/compose4/ServiceLock.h"
#include "helpers/system/Run.h"

#include <arpa/inet.h>
#include <ctime>
#include <fstream>
#include <ifaddrs.h>
#include <sstream>
#include <unistd.h>

static const char *const kSuccess = "Success\n";
constexpr int kCommandMs = 10000;
constexpr int kDialSeconds = 90;

// Exit statuses of nmcli(1) and of a tool that is not there.
constexpr int kActivationFailed = 4;
constexpr int kNotRunning = 8;
constexpr int kNoSuchConnection = 10;
constexpr int kNoTool = 127;

static std::string error(std::string reason)
{
    // The caller takes any text with this word in it for one, and a system error may well be called so.
    for (size_t at = 0; (at = reason.find("Success", at)) != std::string::npos;) {
        reason[at] = 's';
    }
    return "Error: " + reason + "\n";
}

static std::string error(const RunResult &result)
{
    if (result.status == kNoTool) {
        return error("nmcli is missing, install the package network-manager");
    }
    if (result.status == kNotRunning) {
        return error("NetworkManager is not running, start it or install the package network-manager");
    }
    std::string reason = result.errors.substr(0, result.errors.find('\n'));
    if (reason.compare(0, 7, "Error: ") == 0) {
        reason.erase(0, 7);
    }
    if (reason.find("source connection") != std::string::npos) {
        reason += " NetworkManager does not run the network that this machine is connected with.";
    }
    return error(reason);
}

static std::string busy(const Service &service)
{
    return error(std::string(service.name) + " is being changed by another process");
}

static RunResult nmcli(std::vector<std::string> words, int limitMs = kCommandMs)
{
    words.insert(words.begin(), "/usr/bin/nmcli");
    return runToEnd(words, {}, limitMs);
}

/// What to print after a command that finds nothing to do where there is no such connection.
static std::string answer(const RunResult &result)
{
    return result.status == 0 || result.status == kNoSuchConnection ? kSuccess : error(result);
}

/// An empty text, or that the plug-in for this service is not installed.
static std::string missingPlugin(const Service &service)
{
    if (!service.plugin) {
        return error(std::string(service.type) + " is connected without NetworkManager");
    }
    const std::string path = std::string("/usr/lib/NetworkManager/VPN/nm-") + service.plugin + "-service.name";
    return access(path.c_str(), R_OK) == 0
               ? std::string()
               : error(std::string("no plug-in for ") + service.type + ", install the package " + service.package);
}

/// Stores the profile and makes NetworkManager read it. The exit status of that says nothing about the file, so it is
/// asked for the profile afterwards. Returns an empty text or the error.
static std::string load(const Service &service, const std::string &text)
{
    if (!writeProfile(service, text)) {
        return error("can not write " + profilePath(service));
    }
    RunResult result = nmcli({"connection", "load", profilePath(service)});
    if (result.status == 0) {
        result = nmcli({"-g", "connection.id", "connection", "show", "uuid", service.uuid});
    }
    return result.status == 0 ? std::string() : error(result);
}

static std::string withoutPassword(const std::string &profile)
{
    return withValue(profile, "vpn-secrets", "password", {});
}

std::string setUp(const Service &service, const std::string &server, const std::string &psk)
{
    std::string failure = missingPlugin(service);
    if (!failure.empty()) {
        return failure;
    }
    if (!lockService(service, LockHolder::Wait)) {
        return busy(service);
    }
    failure = load(service, profileText(service, server, psk));
    return failure.empty() ? kSuccess : failure;
}

static void forgetPluginKeyOf(const std::string &profile)
{
    forgetPluginKey(valueOf(profile, "vpn-secrets", "ipsec-psk"));
}

std::string removeService(const Service &service)
{
    if (!lockService(service, LockHolder::End)) {
        return busy(service);
    }
    if (!service.plugin) {
        return kSuccess;
    }
    const std::string profile = readProfile(service);
    const RunResult result = nmcli({"connection", "delete", "uuid", service.uuid});
    forgetPluginKeyOf(profile);
    return answer(result);
}

/// Disconnects, and makes NetworkManager forget the password.
static RunResult disconnect(const Service &service)
{
    RunResult result = nmcli({"--wait", "8", "connection", "down", "uuid", service.uuid});
    const std::string profile = readProfile(service);
    forgetPluginKeyOf(profile);
    if (!profile.empty()) {
        load(service, withoutPassword(profile));
    }
    return result;
}

/// Dials with what NetworkManager has. Returns an empty text or the error. Where nobody tells the reason it is tried
/// once more: for some seconds after a dial that was given up the plug-in still works on that, and refuses the next.
static std::string dialLoaded(const Service &service)
{
    const time_t began = time(nullptr);
    for (bool again = false;; again = true) {
        const time_t left = kDialSeconds - (time(nullptr) - began);
        const RunResult result = nmcli({"--wait", std::to_string(left), "connection", "up", "uuid", service.uuid},
                                       static_cast<int>(left + 5) * 1000);
        if (result.status == 0) {
            return {};
        }
        const std::string told = dialFailure(dialJournal(began));
        if (!told.empty()) {
            return error(told);
        }
        if (result.errors.find("secrets") != std::string::npos) {
            return error("691 the user name or password is not valid");
        }
        if (again || result.status != kActivationFailed || time(nullptr) - began > kDialSeconds / 2) {
            return error(result);
        }
    }
}

std::string dial(const Service &service, const std::string &user, const std::string &password)
{
    std::string failure = missingPlugin(service);
    if (!failure.empty()) {
        return failure;
    }
    if (!lockService(service, LockHolder::Wait)) {
        return busy(service);
    }
    const std::string stored = readProfile(service);
    if (stored.empty()) {
        return error(std::string(service.name) + " is not set up");
    }
    const std::string profile = withValue(stored, "vpn", "user", user);
    // NetworkManager has the password from the profile for as long as it dials; the file is rid of it at once.
    failure = load(service, withValue(profile, "vpn-secrets", "password", password));
    if (!writeProfile(service, withoutPassword(profile)) || !failure.empty()) {
        return failure.empty() ? error("can not write " + profilePath(service)) : failure;
    }
    failure = dialLoaded(service);
    if (!failure.empty()) {
        disconnect(service);
        return failure;
    }
    load(service, withoutPassword(profile));
    return kSuccess;
}

std::string hangUp(const Service &service)
{
    return lockService(service, LockHolder::End) ? answer(disconnect(service)) : busy(service);
}

/// The name of the network interface that has this address ("10.0.0.2/32"), or an empty text.
static std::string interfaceWith(const std::string &address)
{
    in_addr wanted = {};
    ifaddrs *all = nullptr;
    std::string name;
    if (inet_pton(AF_INET, address.substr(0, address.find('/')).c_str(), &wanted) != 1 || getifaddrs(&all) != 0) {
        return name;
    }
    for (const ifaddrs *one = all; one && name.empty(); one = one->ifa_next) {
        if (one->ifa_addr && one->ifa_addr->sa_family == AF_INET &&
            reinterpret_cast<const sockaddr_in *>(one->ifa_addr)->sin_addr.s_addr == wanted.s_addr) {
            name = one->ifa_name;
        }
    }
    freeifaddrs(all);
    return name;
}

/// A counter of the interface in bytes, as /sys/class/net tells it; 0 when there is none.
static std::string counter(const std::string &interface, const std::string &name)
{
    std::ifstream file("/sys/class/net/" + interface + "/statistics/" + name);
    unsigned long long bytes = 0;
    file >> bytes;
    return std::to_string(bytes);
}

std::string check(const Service &service)
{
    const RunResult result = nmcli({"-g", "GENERAL.STATE,IP4.ADDRESS", "connection", "show", "uuid", service.uuid});
    if (result.status != 0 && result.status != kNoSuchConnection) {
        return error(result);
    }
    std::istringstream lines(result.output);
    std::string state;
    std::string address;
    std::getline(std::getline(lines, state), address);
    if (state != "activated") {
        if (state.empty()) { // it ended by itself, and nobody hung up
            forgetPluginKeyOf(readProfile(service));
        }
        return std::string(service.name) + " is not connected\n";
    }
    const std::string interface = interfaceWith(address);
    return "Recv " + counter(interface, "rx_bytes") + "\nSend " + counter(interface, "tx_bytes") + "\n" + kSuccess;
}
