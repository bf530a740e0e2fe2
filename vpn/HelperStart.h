#pragma once

#include <QStringList>

#include <memory>

class HelperProcess;

/// The process object for a helper program, not started: output in English, both of its streams read as one.
std::unique_ptr<HelperProcess> newHelper();

/// Starts `program`, an entry of VPNCOMPOSE or SETUPCOMPOSE. Whether it did start is the process object's to tell.
void startHelper(HelperProcess &helper, const QString &program, const QStringList &arguments);

/// Starts the script that undoes what OpenVPN's up script did, and leaves it to itself. It waits for OpenVPN's end.
/// False when it did not start.
bool startDownScript();
