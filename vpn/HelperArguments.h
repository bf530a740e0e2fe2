#pragma once

#include "vpn/VPNClient.h"

#include <QStringList>

/// OpenVPN's command line. The credentials are never part of it: OpenVPN asks for them on its console. `port` is the
/// management port, or empty for a connection without the management interface.
QStringList openVPNArguments(const VPNClient::OPTION &option, const QString &port);

/// The service helper's command lines: dial, report the state and the byte counts, hang up.
QStringList serviceConnectArguments(const VPNClient::OPTION &option);
QStringList serviceStatusArguments(VPNClient::TYPE type);
QStringList serviceDisconnectArguments(VPNClient::TYPE type);

/// The SSTP client's command line. An MTU that is no number, or 0, becomes 1500.
QStringList sstpArguments(const VPNClient::OPTION &option);

/// The setup helper's command lines: create or update the network service, and remove it. The helper tells them apart
/// by their length.
QStringList setupArguments(const VPNClient::SETUP &setup);
QStringList unsetupArguments(VPNClient::TYPE type);
