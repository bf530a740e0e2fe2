#pragma once

#include <QString>

/// The proxy through which OpenVPN reaches its server.
struct TunnelProxy
{
    bool http = false;
    bool socks = false; ///< goes before `http`
    QString address;
    QString port;
    QString credentials; ///< HTTP: path of the credential file; empty when the proxy asks for none
};

/// The further OpenVPN arguments of a connection, separated by "|" as the engine takes them: the proxy's, then the
/// working folder.
QString openVPNParameters(const TunnelProxy &proxy, const QString &folder);
