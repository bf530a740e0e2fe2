#pragma once

#include <QString>

/// The number of connection types; the tables below are indexed by VPNClient::TYPE.
constexpr int kVPNTypes = 5;

/// The helper that makes the connection, below the application folder.
extern const QString VPNCOMPOSE[kVPNTypes];
/// The helper that creates and removes the local settings, below the application folder.
extern const QString SETUPCOMPOSE[kVPNTypes];
/// The type's name on the setup helper's command line.
extern const QString TYPESTRING[kVPNTypes];
/// The name of the system's network service for the type.
extern const QString DISPLAYSTRING[kVPNTypes];

/// Whether a number is an index of the tables.
bool isValidType(int type);

/// The hook through which helper paths pass, for platforms whose paths have variable parts. Here: the path itself.
QString FormatCompose(QString path);

/// The full path of a helper of VPNCOMPOSE or SETUPCOMPOSE.
QString helperPath(const QString &entry);
