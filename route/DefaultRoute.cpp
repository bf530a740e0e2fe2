#include "route/DefaultRoute.h"

#include "platform/Tool.h"

#include <cstring>

static QByteArray runRoute(const char *verb, const QStringList &gateway = {})
{
    static const QString any = QStringLiteral("0.0.0.0");
    return runTool(QStringLiteral("route"),
                   QStringList{QString::fromLatin1(verb), any, QStringLiteral("mask"), any} + gateway)
        .output;
}

static int statusOf(const QByteArray &output)
{
    return output.contains("OK!") ? 1 : -1;
}

int routeAddDefaultRoute(const char *gateway)
{
    return statusOf(runRoute("add", {QString::fromLocal8Bit(gateway)}));
}

int routeDelDefaultRoute()
{
    return statusOf(runRoute("delete"));
}

int routeSetDefaultRoute(const char *gateway)
{
    return statusOf(runRoute("change", {QString::fromLocal8Bit(gateway)}));
}

int routeGetDefaultRoute(char *gateway)
{
    QByteArray rest = runRoute("print");
    // Destination, then mask. Callers rely on the arithmetic for an output without "0.0.0.0": the cut then starts
    // at 7.
    for (int column = 0; column < 2; ++column) {
        rest = rest.mid(rest.indexOf("0.0.0.0") + 8).trimmed();
    }
    if (rest.isEmpty()) {
        return -1;
    }
    // Only what is needed is written: callers may know that their addresses are short.
    const QByteArray token = rest.split(' ').first().left(kGatewayBufferSize - 1);
    std::memcpy(gateway, token.constData(), static_cast<size_t>(token.size()) + 1);
    return 1;
}
