#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The beginning of every error that the engine reports, and of no other message of it.
constexpr char kErrorPrefix[] = "[ERROR]";

/// Helper output as the text of a message: up to the first NUL, and behind a blank where it would pass for an error
/// of the engine.
QString outputMessage(const QByteArray &output);

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
