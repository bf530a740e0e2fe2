#include "route/DefaultGateway.h"

#include "common/AppPath.h"
#include "common/StateFile.h"
#include "names/StateFiles.h"
#include "platform/Spawn.h"
#include "platform/Tool.h"

#include <QDebug>

QString defaultGatewayOf(const QByteArray &routingTable)
{
    const QStringList lines = QString::fromUtf8(routingTable.constData()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (!line.startsWith(QLatin1String("default"))) {
            continue;
        }
        const QString rest = line.mid(8).trimmed();
        QString token = rest.left(rest.indexOf(QLatin1Char(' '))).trimmed();
        if (!token.isEmpty() && token.at(0).isDigit()) {
            return token;
        }
    }
    return {};
}

static const QString kNetstat = QStringLiteral("netstat");
/// The routes lie in a file of the kernel's, and the program's end waits for the answer, too.
static constexpr int kAnswerLimitMs = 5000;

QString GetDefaultGateway()
{
    return defaultGatewayOf(runToolInEventLoop(kNetstat, {QStringLiteral("-r")}).output);
}

std::future<QString> askDefaultGateway()
{
    // In a thread of its own: the one that starts a program goes on after that, often on the same processor.
    return std::async(std::launch::async,
                      [] { return defaultGatewayOf(toolOutput(kNetstat, {QStringLiteral("-r")}, kAnswerLimitMs)); });
}

static void changeRoute(const QString &verb, const QString &destination, const QString &mask, const QString &gateway)
{
    qDebug() << QStringLiteral("route %1 %2 mask %3 %4").arg(verb, destination, mask, gateway);
    const ToolResult result =
        runTool(QStringLiteral("route"), {verb, destination, QStringLiteral("mask"), mask, gateway});
    qDebug() << QString::fromLocal8Bit(result.output);
}

void AddGateway(QString destination, QString mask, QString gateway)
{
    changeRoute(QStringLiteral("add"), destination, mask, gateway);
}

void DeleteGateway(QString destination, QString mask, QString gateway)
{
    changeRoute(QStringLiteral("delete"), destination, mask, gateway);
}

void SaveDefaultGateway(QString gateway)
{
    writeWhole(appPath(kGatewayFile), gateway.toUtf8());
}

QString LoadDefaultGateway()
{
    return QString::fromUtf8(readWhole(appPath(kGatewayFile)).constData()); // up to the first NUL
}
