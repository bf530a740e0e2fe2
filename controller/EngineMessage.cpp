#include "controller/EngineMessage.h"

#include <QStringList>

EngineMessage classifyMessage(const QString &message, const QString &protocol)
{
    if (message.contains(QLatin1String("[ERROR]openvpn error"))) {
        return EngineMessage::TunnelFailed;
    }
    if (!message.contains(QLatin1String("[ERROR]"))) {
        return EngineMessage::Progress;
    }
    if (protocol == QLatin1String("L2TP") && message.contains(QLatin1String("691"))) {
        return EngineMessage::L2TPLoginFailed;
    }
    return EngineMessage::Error;
}

QString serverAddressOf(QString message)
{
    message.remove(QLatin1String("[AF_INET]"));
    QString address;
    for (const QLatin1String marker :
         {QLatin1String("UDPv4 link remote:"), QLatin1String("TCPv4_CLIENT link remote:")}) {
        const int found = message.indexOf(marker);
        if (found < 0) {
            continue;
        }
        const int lineStart = message.lastIndexOf(QLatin1Char('\n'), found) + 1;
        const QString line = message.mid(lineStart).section(QLatin1Char('\n'), 0, 0);
        const int start = found - lineStart + marker.size() + 1; // behind the blank after the colon
        const int portSeparator = line.lastIndexOf(QLatin1Char(':'));
        address = line.mid(start, portSeparator - start);
    }
    return address;
}
