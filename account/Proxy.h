#pragma once

#include <QNetworkProxy>
#include <QString>

/// The way that the program's own requests take.
enum class ProxyKind { None, Http, Socks };

/// The application proxy for a choice on the proxy page. `port` is decimal text; what is no port gives 0. Only an
/// HTTP proxy carries the credentials.
QNetworkProxy networkProxy(ProxyKind kind, const QString &host, const QString &port, const QString &user,
                           const QString &password);

/// Writes the proxy's credentials to "/cfg/proxy", readable by the owner only, in the form of OpenVPN's
/// authentication file: user name and password, a line each. Returns the file's path, also when it could not be
/// written.
QString writeProxyCredentials(const QString &user, const QString &password);
