#pragma once

#include <QString>

/// The port of OpenVPN's management interface for the current connection, as decimal text. The engine's threads use
/// it through the functions below, which lock it.
extern QString VPNMGRPORT;
/// The upper bound of the port search, itself not a candidate.
extern const QString VPNMGRPORTMAX;

/// Searches upward from VPNMGRPORT for a TCP port that is free on all interfaces, and stores it there. Since the
/// search starts at the previous connection's port, ports only grow within a run of the program. False, with
/// VPNMGRPORT unchanged, when none is free. Callable from any thread.
bool UpdateValidManagementPort();

/// VPNMGRPORT, read safely from any thread.
QString managementPort();
