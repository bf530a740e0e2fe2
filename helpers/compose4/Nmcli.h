#pragma once

#include <QByteArray>
#include <QStringList>

/// What came of one run of NetworkManager's command-line tool.
struct NmcliResult
{
    bool started = false;
    int status = -1; ///< nmcli(1), "EXIT STATUS"; -1 when it was killed, because the limit passed or the user hung up
    QByteArray output; ///< standard output
    QByteArray error;  ///< the first line of standard error
};

/// nmcli's exit statuses that are told apart.
constexpr int kNotRunning = 8;
constexpr int kNoSuchConnection = 10;

/// Runs nmcli with nothing of the caller's environment; it is killed when this process dies. `stop`, where given, is
/// looked at all the time: once it is not 0, nmcli is killed.
NmcliResult nmcli(const QStringList &arguments, int limitMs, const volatile int *stop = nullptr);
