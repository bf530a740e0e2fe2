#include "account/ServiceRequest.h"

#include "account/Limits.h"
#include "account/Updates.h"
#include "base/Addresses.h"
#include "base/Settings.h"
#include "common/Wait.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDebug>
#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QPointer>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTimer>

#include <arpa/inet.h>
#include <linux/tcp.h>
#include <map>
#include <memory>
#include <netinet/in.h>
#include <openssl/x509.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <vector>

static const char kRefusal[] = "korvanRefusal";

QUrl apiUrl()
{
    const QString configured = getSetting(QStringLiteral("LOGIN/VER"));
    return QUrl(configured.isEmpty() ? QStringLiteral(KORVAN_API_URL) : configured, QUrl::TolerantMode);
}

QByteArray publicKeyPin(const QByteArray &certificate)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(certificate.constData());
    const std::unique_ptr<X509, decltype(&X509_free)> x509(d2i_X509(nullptr, &bytes, certificate.size()), &X509_free);
    unsigned char *key = nullptr;
    const int length = x509 ? i2d_X509_PUBKEY(X509_get_X509_PUBKEY(x509.get()), &key) : 0;
    if (length <= 0) {
        return {};
    }
    const QByteArray info(reinterpret_cast<const char *>(key), length);
    OPENSSL_free(key);
    return QCryptographicHash::hash(info, QCryptographicHash::Sha256).toHex();
}

/// The pins in force. A word among them that is no pin pins all the same: nothing fits it.
static QStringList servicePins()
{
    const QStringList configured = getSettingWords(QStringLiteral("SERVICE/PINS"));
    return configured.isEmpty() ? QStringLiteral(KORVAN_SERVICE_PINS).split(QLatin1Char(' '), Qt::SkipEmptyParts)
                                : configured;
}

static bool isServiceHost(const QString &host)
{
    return host == apiUrl().host() || host == QUrl(UPDATE_URL).host();
}

static void refuse(QNetworkReply &reply, const char *reason, const QString &host)
{
    qDebug().noquote() << "WARNING:" << QString::fromLatin1(reason).arg(host);
    reply.setProperty(kRefusal, QCoreApplication::translate("Korvan", reason).arg(host));
}

/// The port of the socket's other end; 0 for what is no TCP connection.
static quint16 peerPort(int descriptor)
{
    sockaddr_storage peer = {};
    socklen_t length = sizeof peer;
    int type = 0;
    socklen_t typeLength = sizeof type;
    if (getsockopt(descriptor, SOL_SOCKET, SO_TYPE, &type, &typeLength) != 0 || type != SOCK_STREAM ||
        getpeername(descriptor, reinterpret_cast<sockaddr *>(&peer), &length) != 0) {
        return 0;
    }
    switch (peer.ss_family) {
    case AF_INET:
        return ntohs(reinterpret_cast<const sockaddr_in *>(&peer)->sin_port);
    case AF_INET6:
        return ntohs(reinterpret_cast<const sockaddr_in6 *>(&peer)->sin6_port);
    default:
        return 0;
    }
}

/// The port at the other end of the reply's connections.
static int portOf(const QNetworkReply &reply)
{
    constexpr int httpPort = 80;
    constexpr int httpsPort = 443;
    const QNetworkProxy proxy = QNetworkProxy::applicationProxy();
    return proxy.type() != QNetworkProxy::NoProxy
               ? proxy.port()
               : reply.url().port(reply.url().scheme() == QLatin1String("https") ? httpsPort : httpPort);
}

/// The descriptors of the reply's connections. Qt does not give its sockets away, and other requests may have theirs
/// to the same port, so each connection becomes that of the first reply that asks for one and has none.
static std::vector<int> connectionsOf(const QNetworkReply &reply)
{
    static std::map<ino_t, QPointer<const QNetworkReply>> owners;
    std::map<ino_t, QPointer<const QNetworkReply>> stillOpen;
    std::vector<int> own;
    std::pair<int, ino_t> unclaimed = {};
    const int port = portOf(reply);
    for (const QString &name : QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System)) {
        const int descriptor = name.toInt();
        struct stat info = {};
        const int itsPort = descriptor > 2 ? peerPort(descriptor) : 0;
        if (itsPort == 0 || fstat(descriptor, &info) != 0) {
            continue;
        }
        const auto owner = owners.find(info.st_ino);
        if (owner != owners.end()) {
            stillOpen.insert(*owner);
            if (owner->second == &reply) {
                own.push_back(descriptor);
            }
        } else if (itsPort == port && unclaimed.first == 0) {
            unclaimed = {descriptor, info.st_ino};
        }
    }
    if (own.empty() && unclaimed.first != 0) {
        stillOpen.emplace(unclaimed.second, &reply);
        own.push_back(unclaimed.first);
    }
    owners = stillOpen;
    return own;
}

static void hangUp(const QNetworkReply &reply)
{
    for (const int connection : connectionsOf(reply)) {
        shutdown(connection, SHUT_RDWR);
    }
}

void giveUp(QNetworkReply &reply)
{
    constexpr int limitMs = 3000;
    constexpr int againMs = 20;
    if (reply.isFinished()) {
        return;
    }
    hangUp(reply);
    Wait end;
    end.until(&reply, &QNetworkReply::finished);
    QTimer again; // Qt asks a server that has said nothing yet once more
    QObject::connect(&again, &QTimer::timeout, &reply, [&reply] { hangUp(reply); });
    again.start(againMs);
    end.run(limitMs);
}

/// Shuts a connection that has brought far more than it may. While a server sends without a pause Qt tells nothing of
/// the body, so that its length alone would never be found too long. None gets less than a profile may have; a
/// quarter is for what is around a body.
static void limitConnection(QNetworkReply &reply, qint64 limit)
{
    constexpr int intervalMs = 20;
    const auto most = static_cast<quint64>(qMax<qint64>(limit, kProfileLimit) / 4 * 5);
    auto *look = new QTimer(&reply);
    QObject::connect(look, &QTimer::timeout, &reply, [&reply, most] {
        for (const int connection : connectionsOf(reply)) {
            tcp_info info = {};
            socklen_t length = sizeof info;
            if (getsockopt(connection, IPPROTO_TCP, TCP_INFO, &info, &length) == 0 &&
                info.tcpi_bytes_received > most) {
                qDebug().noquote() << "WARNING:" << reply.url().host() << "sends without end, and was given up";
                shutdown(connection, SHUT_RDWR);
            }
        }
    });
    QObject::connect(&reply, &QNetworkReply::finished, look, &QTimer::stop);
    look->start(intervalMs);
}

void limitReply(QNetworkReply &reply, qint64 limit)
{
    limitBody(reply, limit);
    limitConnection(reply, limit);
}

QNetworkReply *sendRequest(QNetworkAccessManager &manager, QNetworkRequest request, qint64 limit,
                           const QByteArray *form)
{
    const QString host = request.url().host();
    const QStringList pins = isServiceHost(host) ? servicePins() : QStringList();
    const bool inTheOpen = !pins.isEmpty() && request.url().scheme() != QLatin1String("https");
    if (inTheOpen) {
        request.setUrl(QUrl()); // fails without a connection
    }
    request.setRawHeader("Accept-Encoding", "identity"); // a compressed answer could grow a thousandfold here
    QNetworkReply *reply = form != nullptr ? manager.post(request, *form) : manager.get(request);
    reply->ignoreSslErrors();
    limitReply(*reply, limit);
    if (inTheOpen) {
        refuse(*reply, QT_TRANSLATE_NOOP("Korvan", "The address of %1 is not encrypted, so that nothing was sent."),
               host);
    } else if (!pins.isEmpty()) {
        QObject::connect(reply, &QNetworkReply::encrypted, reply, [reply, host, pins] {
            // Only the server's own certificate: nothing proves that it has the keys of the others.
            const QByteArray pin = publicKeyPin(reply->sslConfiguration().peerCertificate().toDer());
            if (!pins.contains(QString::fromLatin1(pin), Qt::CaseInsensitive)) {
                refuse(*reply,
                       QT_TRANSLATE_NOOP("Korvan",
                                         "%1 does not show the key that it is known by, so that nothing was sent. "
                                         "Somebody may be answering in its place."),
                       host);
                reply->abort();
            }
        });
    }
    return reply;
}

QString refusal(const QNetworkReply &reply)
{
    return reply.property(kRefusal).toString();
}
