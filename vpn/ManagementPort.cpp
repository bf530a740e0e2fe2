#include "vpn/ManagementPort.h"

#include <QNetworkProxy>
#include <QTcpServer>

#include <mutex>

QString VPNMGRPORT = QStringLiteral("44358");
const QString VPNMGRPORTMAX = QStringLiteral("45058");

static std::mutex portLock;

bool UpdateValidManagementPort()
{
    const std::lock_guard<std::mutex> guard(portLock);
    QTcpServer server;
    server.setProxy(QNetworkProxy::NoProxy); // the application's proxy is for the outside world
    const quint16 bound = VPNMGRPORTMAX.toUShort();
    for (quint16 port = VPNMGRPORT.toUShort(); port < bound; ++port) {
        if (server.listen(QHostAddress::Any, port)) {
            VPNMGRPORT = QString::number(port);
            return true;
        }
    }
    return false;
}

QString managementPort()
{
    const std::lock_guard<std::mutex> guard(portLock);
    return VPNMGRPORT;
}
