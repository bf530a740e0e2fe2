#pragma once

#include <QByteArray>
#include <QString>

#include <future>

/// The address of the machine's current IPv4 default route, as "netstat -r" tells it; an empty string when there is
/// none. Waits in a local event loop, without a limit, until the command ends.
QString GetDefaultGateway();

/// The same for whoever has something else to do meanwhile. The answer comes within 5 s, or is empty.
std::future<QString> askDefaultGateway();

/// Add and delete a route with the "route" command ("route add D mask M G"). What the command prints goes to the log;
/// its result is not examined. Each wait, for the start and for the end, is limited to 30 s.
void AddGateway(QString destination, QString mask, QString gateway);
void DeleteGateway(QString destination, QString mask, QString gateway);

/// Keep the gateway in "/defgate", so that it survives a crash of the program. A missing file loads as an empty
/// string.
void SaveDefaultGateway(QString gateway);
QString LoadDefaultGateway();

/// The gateway of the first line of a routing table that begins with "default" and names an address, not an
/// interface; an empty string when no line does.
QString defaultGatewayOf(const QByteArray &routingTable);
