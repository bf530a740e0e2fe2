#pragma once

#include "platform/Spawn.h"

#include <QByteArray>
#include <QString>

#include <memory>

/// The address of the machine's current IPv4 default route, as "netstat -r" tells it; an empty string when there is
/// none. Waits in a local event loop, without a limit, until the command ends.
QString GetDefaultGateway();

/// The same in two steps, for whoever has something else to do meanwhile: starts the command, and takes its answer,
/// for which it waits where it is not there yet, at most 30 s.
std::unique_ptr<ToolAtWork> askDefaultGateway();
QString answeredGateway(const ToolAtWork &question);

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
