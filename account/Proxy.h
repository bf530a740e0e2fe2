#pragma once

#include <QNetworkProxy>
#include <QString>

/// The proxy page. Of the three ways a person ticks one, code may tick more; what goes first then, each reader says.
struct ProxySettings
{
    bool none = false;
    bool http = false;
    bool socks = false;
    QString address;
    QString port;               ///< decimal text
    bool authenticated = false; ///< an HTTP proxy asks OpenVPN for the credentials
    QString user;
    QString password;

    /// The way as a number: 1 none, 2 HTTP, 3 SOCKS, the first that is ticked; 0 for nothing. Setting any other
    /// number ticks nothing.
    int type() const;
    void setType(int type);
};

/// The proxy of the program's own requests; HTTP goes before SOCKS. A port that is none gives 0. Only an HTTP proxy
/// carries the credentials.
QNetworkProxy networkProxy(const ProxySettings &settings);

/// The arguments by which OpenVPN uses the proxy, each after a "|"; SOCKS goes before HTTP. `credentials` is the path
/// of the credential file, or empty. Empty without a proxy.
QString openVPNProxy(const ProxySettings &settings, const QString &credentials);

/// Writes the proxy's credentials to "/cfg/proxy", readable by the owner only, in the form of OpenVPN's
/// authentication file: user name and password, a line each. Returns the file's path, also when it could not be
/// written.
QString writeProxyCredentials(const ProxySettings &settings);
