#pragma once

#include <QString>

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
