#include "helpers/compose4/Operations.h"

#include "helpers/LockDown.h"
#include "helpers/compose4/Nmcli.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <arpa/inet.h>
#include <fcntl.h>
#include <ifaddrs.h>
#include <sys/stat.h>
#include <unistd.h>

volatile sig_atomic_t g_stop = 0;

static const char *const kSuccess = "Success\n";
constexpr int kCommandMs = 10000;
constexpr int kDialSeconds = 90;

/// Holds off the other operations on this service until the process ends.
class ServiceLock
{
public:
    explicit ServiceLock(const Service &service)
    {
        mkdir(kJournalFolder, 0700);
        const QByteArray path = QByteArray(kJournalFolder) + "/" + service.name + ".lock";
        m_fd = open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    }

    /// Waits for the lock. With `interrupt` the process that holds it is asked to end.
    bool take(bool interrupt)
    {
        constexpr int kLimitMs = 15000;
        QElapsedTimer clock;
        clock.start();
        do {
            struct flock lock = {};
            lock.l_type = F_WRLCK;
            if (fcntl(m_fd, F_SETLK, &lock) == 0) {
                return true;
            }
            if (interrupt && fcntl(m_fd, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK && lock.l_pid > 0) {
                kill(lock.l_pid, SIGTERM);
            }
            usleep(50000);
        } while (m_fd >= 0 && !clock.hasExpired(kLimitMs));
        return false;
    }

private:
    int m_fd = -1; // closed by the end of the process
};

static QByteArray error(const QByteArray &reason)
{
    // The caller takes any text with "Success" in it for one, and a system error may well be called that.
    QByteArray text = "Error: " + reason + "\n";
    return text.replace("Success", "success");
}

static QByteArray error(const NmcliResult &result)
{
    if (!result.started) {
        return error("nmcli is missing, install the package network-manager");
    }
    if (result.status == kNotRunning) {
        return error("NetworkManager is not running, start it or install the package network-manager");
    }
    QByteArray reason = result.error;
    if (reason.startsWith("Error: ")) {
        reason.remove(0, 7);
    }
    if (reason.contains("source connection")) {
        reason += " NetworkManager does not run the network that this machine is connected with.";
    }
    return error(reason.isEmpty() ? QByteArray("NetworkManager gave no answer in time") : reason);
}

static QByteArray busy(const Service &service)
{
    return error(QByteArray(service.name) + " is being changed by another process");
}

/// An empty text, or that the plug-in for this service is not installed.
static QByteArray missingPlugin(const Service &service)
{
    if (!service.plugin) {
        return error(QByteArray(service.type) + " is connected without NetworkManager");
    }
    const QByteArray path = QByteArray("/usr/lib/NetworkManager/VPN/nm-") + service.plugin + "-service.name";
    return access(path.constData(), R_OK) == 0
               ? QByteArray()
               : error(QByteArray("no plug-in for ") + service.type + ", install the package " + service.package);
}

static NmcliResult command(const Service &service, const QStringList &words)
{
    return nmcli(words + QStringList{QStringLiteral("uuid"), QString::fromLatin1(service.uuid)}, kCommandMs);
}

/// Stores the profile and makes NetworkManager read it. Its exit status says nothing about the file, so it is asked
/// for the profile afterwards.
static QByteArray load(const Service &service, const QByteArray &text)
{
    if (!writeProfile(service, text)) {
        return error("can not write " + profilePath(service));
    }
    NmcliResult result =
        nmcli({QStringLiteral("connection"), QStringLiteral("load"), QString::fromLatin1(profilePath(service))},
              kCommandMs);
    if (result.status == 0) {
        result = command(service, {QStringLiteral("-g"), QStringLiteral("connection.id"),
                                   QStringLiteral("connection"), QStringLiteral("show")});
    }
    return result.status == 0 ? QByteArray() : error(result);
}

QByteArray setUp(const Service &service, const QByteArray &server, const QByteArray &psk)
{
    QByteArray missing = missingPlugin(service);
    if (!missing.isEmpty()) {
        return missing;
    }
    ServiceLock lock(service);
    if (!lock.take(false)) {
        return busy(service);
    }
    const QByteArray failure = load(service, profileText(service, server, psk));
    return failure.isEmpty() ? kSuccess : failure;
}

QByteArray remove(const Service &service)
{
    ServiceLock lock(service);
    if (!lock.take(true)) {
        return busy(service);
    }
    if (!service.plugin) {
        return kSuccess;
    }
    const NmcliResult result = command(service, {QStringLiteral("connection"), QStringLiteral("delete")});
    return result.status == 0 || result.status == kNoSuchConnection ? QByteArray(kSuccess) : error(result);
}

static NmcliResult disconnect(const Service &service)
{
    return command(service, {QStringLiteral("--wait"), QStringLiteral("8"), QStringLiteral("connection"),
                             QStringLiteral("down")});
}

QByteArray dial(const Service &service, const QByteArray &user, const QByteArray &password)
{
    QByteArray missing = missingPlugin(service);
    if (!missing.isEmpty()) {
        return missing;
    }
    ServiceLock lock(service);
    if (!lock.take(false)) {
        return busy(service);
    }
    const QByteArray stored = readProfile(service);
    if (stored.isEmpty()) {
        return error(QByteArray(service.name) + " is not set up");
    }
    // NetworkManager has the password from the profile for as long as it dials; the file is rid of it at once.
    const QByteArray profile = withValue(stored, "vpn", "user", user);
    const QByteArray failure = load(service, withValue(profile, "vpn-secrets", "password", password));
    if (!writeProfile(service, profile) || !failure.isEmpty()) {
        return failure.isEmpty() ? error("can not write " + profilePath(service)) : failure;
    }
    const NmcliResult result =
        nmcli({QStringLiteral("--wait"), QString::number(kDialSeconds), QStringLiteral("connection"),
               QStringLiteral("up"), QStringLiteral("uuid"), QString::fromLatin1(service.uuid)},
              (kDialSeconds + 5) * 1000, &g_stop);
    if (result.status != 0) {
        disconnect(service);
    }
    load(service, profile);
    if (result.status == 0) {
        return kSuccess;
    }
    if (g_stop != 0) {
        return error("cancelled");
    }
    return result.error.contains("secrets") ? error("691 the user name or password is not valid") : error(result);
}

QByteArray hangUp(const Service &service)
{
    ServiceLock lock(service);
    if (!lock.take(true)) {
        return busy(service);
    }
    const NmcliResult result = disconnect(service);
    return result.status == 0 || result.status == kNoSuchConnection ? QByteArray(kSuccess) : error(result);
}

/// The name of the network interface that has this address ("10.0.0.2/32"), or an empty text.
static QByteArray interfaceWith(const QByteArray &address)
{
    in_addr wanted = {};
    ifaddrs *all = nullptr;
    QByteArray name;
    if (inet_pton(AF_INET, address.left(address.indexOf('/')).constData(), &wanted) != 1 || getifaddrs(&all) != 0) {
        return name;
    }
    for (const ifaddrs *one = all; one && name.isEmpty(); one = one->ifa_next) {
        if (one->ifa_addr && one->ifa_addr->sa_family == AF_INET &&
            reinterpret_cast<const sockaddr_in *>(one->ifa_addr)->sin_addr.s_addr == wanted.s_addr) {
            name = one->ifa_name;
        }
    }
    freeifaddrs(all);
    return name;
}

/// A counter of the interface in bytes, as /sys/class/net tells it; 0 when there is none.
static QByteArray counter(const QByteArray &interface, const char *name)
{
    QFile file(QString::fromLocal8Bit("/sys/class/net/" + interface + "/statistics/" + name));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray("0");
}

QByteArray check(const Service &service)
{
    const NmcliResult result = command(service, {QStringLiteral("-g"), QStringLiteral("GENERAL.STATE,IP4.ADDRESS"),
                                                 QStringLiteral("connection"), QStringLiteral("show")});
    const QList<QByteArray> lines = result.output.trimmed().split('\n');
    if (result.status != 0 && result.status != kNoSuchConnection) {
        return error(result);
    }
    if (lines.first() != "activated") {
        return QByteArray(service.name) + " is not connected\n";
    }
    const QByteArray interface = interfaceWith(lines.value(1));
    return "Recv " + counter(interface, "rx_bytes") + "\nSend " + counter(interface, "tx_bytes") + "\n" + kSuccess;
}
