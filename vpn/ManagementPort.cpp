#include "vpn/ManagementPort.h"

#include <QMutex>
#include <QNetworkProxy>
#include <QTcpServer>

QString VPNMGRPORT = QStringLiteral("44358");
const QString VPNMGRPORTMAX = QStringLiteral("45058");

static QMutex portLock;

bool UpdateValidManagementPort()
{
    const QMutexLocker locker(&portLock);
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
    const QMutexLocker locker(&portLock);
    return VPNMGRPORT;
}
