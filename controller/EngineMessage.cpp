#include "controller/EngineMessage.h"

#include "names/PastTunnel.h"
#include "vpn/HelperOutput.h"
#include "vpn/OpenVPNReader.h"

#include <QRegularExpression>
#include <QStringList>

EngineMessage classifyMessage(const QString &message, const QString &protocol)
{
    // At the beginning only: further behind stands what a server has chosen.
    const QLatin1String error(kErrorPrefix);
    if (!message.startsWith(error)) {
        return EngineMessage::Progress;
    }
    if (message.midRef(error.size()).startsWith(QLatin1String("openvpn error"))) {
        return EngineMessage::TunnelFailed;
    }
    if (protocol == QLatin1String("L2TP") && message.contains(QLatin1String("691"))) {
        return EngineMessage::L2TPLoginFailed;
    }
    return EngineMessage::Error;
}

QString serverAddressOf(QString message)
{
    message.remove(QLatin1String("[AF_INET]"));
    const QStringList lines = message.split(QLatin1Char('\n'));
    QString address;
    for (const QLatin1String marker :
         {QLatin1String("UDPv4 link remote:"), QLatin1String("TCPv4_CLIENT link remote:")}) {
        for (const QString &line : lines) {
            const QString words = openVPNWords(line);
            if (words.startsWith(marker)) {
                const int start = marker.size() + 1; // behind the blank after the colon
                address = words.mid(start, words.lastIndexOf(QLatin1Char(':')) - start);
                break;
            }
        }
    }
    return address;
}

std::optional<PastTunnel> pastTunnelOf(const QString &message)
{
    // The whole line: no time stamp of OpenVPN's stands before it, and no words of a server's are in it.
    static const QRegularExpression line(
        QStringLiteral("^%1(?:nothing|(all)(?: but ([0-9a-f.:/, ]+))?(?:; ([0-9a-f.:/, ]+))?|([0-9a-f.:/, ]+))$")
            .arg(QLatin1String(kPastTunnel)),
        QRegularExpression::MultilineOption);
    std::optional<PastTunnel> past;
    for (auto matches = line.globalMatch(message); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        past = PastTunnel{!match.captured(1).isEmpty(), match.captured(2), match.captured(3) + match.captured(4)};
    }
    return past;
}
