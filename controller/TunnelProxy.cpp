#include "controller/TunnelProxy.h"

QString openVPNParameters(const TunnelProxy &proxy, const QString &folder)
{
    QString parameters;
    if (proxy.http) {
        parameters = QStringLiteral("|--http-proxy|%1|%2|%3").arg(proxy.address, proxy.port, proxy.credentials);
    }
    if (proxy.socks) {
        parameters = QStringLiteral("|--socks-proxy|%1|%2").arg(proxy.address, proxy.port);
    }
    return parameters + QStringLiteral("|--cd|%1").arg(folder);
}
