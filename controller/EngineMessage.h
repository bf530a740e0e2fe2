#pragma once

#include <QString>

#include <optional>

/// What a message of the VPN engine means to the controller.
enum class EngineMessage {
    Progress,        ///< no error
    TunnelFailed,    ///< OpenVPN ended although the tunnel was up
    L2TPLoginFailed, ///< the L2TP server rejected the name or the password (PPP's code 691)
    Error,           ///< any other error
};

EngineMessage classifyMessage(const QString &message, const QString &protocol);

/// The server's address from the line in which OpenVPN names the remote end of its UDP or TCP link; a null string
/// when the message holds no such line.
QString serverAddressOf(QString message);

/// What goes past the tunnel that comes up.
struct PastTunnel
{
    bool isAll = false; ///< all but `taken`
    QString taken;      ///< addresses, as they are shown
    QString ordinary;   ///< addresses that go past it all the same
};

/// What the network helper says of that in a line of its own; no value when the message holds no such line.
std::optional<PastTunnel> pastTunnelOf(const QString &message);
