#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What a chunk of OpenVPN's output asks for or tells. Prompts come before everything else; a marker that is split
/// across two chunks is not recognised.
enum class OpenVPNOutput { Other, WantsUser, WantsPassword, AuthFailed, TunnelFailed, TunnelUp };
OpenVPNOutput classifyOpenVPN(const QString &chunk);

/// The outcome in a chunk of the service helper's output.
enum class ServiceOutput { Other, Success, Error };
ServiceOutput classifyService(const QString &chunk);

/// What a chunk of the SSTP client's log file tells.
enum class SstpOutput { Other, Connected, AuthFailed };
SstpOutput classifySstp(const QString &chunk);

/// Bytes through the tunnel.
struct ByteCount
{
    quint64 received = 0;
    quint64 sent = 0;
};

/// The counts after "Recv " and "Send " in a status report of the service helper; 0 where there is none.
ByteCount parseServiceCounts(const QByteArray &output);

/// Takes the complete lines out of what OpenVPN's management interface sent and returns the last byte-count report
/// among them (">BYTECOUNT:received,sent"). A report without a second field is skipped; an incomplete line stays in
/// the buffer for the next read.
std::optional<ByteCount> takeByteCount(QByteArray &buffer);
