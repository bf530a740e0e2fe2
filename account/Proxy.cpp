#include "account/Proxy.h"

#include "common/AppPath.h"
#include "common/StateFile.h"
#include "names/StateFiles.h"

static constexpr int kNone = 1;
static constexpr int kHttp = 2;
static constexpr int kSocks = 3;

int ProxySettings::type() const
{
    return none ? kNone : http ? kHttp : socks ? kSocks : 0;
}

void ProxySettings::setType(int type)
{
    none = type == kNone;
    http = type == kHttp;
    socks = type == kSocks;
}

QNetworkProxy networkProxy(const ProxySettings &settings)
{
    QNetworkProxy proxy(QNetworkProxy::NoProxy);
    if (!settings.http && !settings.socks) {
        return proxy;
    }
    proxy.setType(settings.http ? QNetworkProxy::HttpProxy : QNetworkProxy::Socks5Proxy);
    proxy.setHostName(settings.address);
    proxy.setPort(settings.port.toUShort());
    if (settings.http) {
        proxy.setUser(settings.user);
        proxy.setPassword(settings.password);
    }
    proxy.setCapabilities(QNetworkProxy::TunnelingCapability | QNetworkProxy::ListeningCapability |
                          QNetworkProxy::UdpTunnelingCapability | QNetworkProxy::HostNameLookupCapability);
    return proxy;
}

QString openVPNProxy(const ProxySettings &settings, const QString &credentials)
{
    if (settings.socks) {
        return QStringLiteral("|--socks-proxy|%1|%2").arg(settings.address, settings.port);
    }
    return settings.http ? QStringLiteral("|--http-proxy|%1|%2|%3").arg(settings.address, settings.port, credentials)
                         : QString();
}

QString writeProxyCredentials(const ProxySettings &settings)
{
    QString path = appPath(kProxyLoginFile);
    writeWhole(path, settings.user.toLocal8Bit() + "\r\n" + settings.password.toLocal8Bit() + "\r\n");
    return path;
}
