#include "account/Proxy.h"

#include "common/AppPath.h"
#include "common/StateFile.h"

QNetworkProxy networkProxy(ProxyKind kind, const QString &host, const QString &port, const QString &user,
                           const QString &password)
{
    QNetworkProxy proxy(QNetworkProxy::NoProxy);
    if (kind == ProxyKind::None) {
        return proxy;
    }
    proxy.setType(kind == ProxyKind::Http ? QNetworkProxy::HttpProxy : QNetworkProxy::Socks5Proxy);
    proxy.setHostName(host);
    proxy.setPort(port.toUShort());
    if (kind == ProxyKind::Http) {
        proxy.setUser(user);
        proxy.setPassword(password);
    }
    proxy.setCapabilities(QNetworkProxy::TunnelingCapability | QNetworkProxy::ListeningCapability |
                          QNetworkProxy::UdpTunnelingCapability | QNetworkProxy::HostNameLookupCapability);
    return proxy;
}

QString writeProxyCredentials(const QString &user, const QString &password)
{
    QString path = appPath("/cfg/proxy");
    writeWhole(path, user.toLocal8Bit() + "\r\n" + password.toLocal8Bit() + "\r\n");
    return path;
}
