#pragma once

#include <QByteArray>
#include <QString>

/// What OpenVPN's output asks for or tells. What is looked for first comes first.
enum class OpenVPNOutput { WantsUser, WantsPassword, AuthFailed, TunnelFailed, TunnelUp, Other };

/// The line without the prompts and the time stamp at its beginning: what OpenVPN says there begins with words of its
/// own. Names and texts that a server has chosen come further behind, and OpenVPN lets no line end in them pass.
QString openVPNWords(const QString &line);

/// Reads OpenVPN's output chunk by chunk, as it comes from the process. A marker counts at its place only: at the
/// beginning of its line's words, and whole in one chunk. Where that cuts a line, its beginning is remembered.
class OpenVPNReader
{
public:
    struct Chunk
    {
        QString message; ///< for the log, see outputMessage()
        OpenVPNOutput output;
    };
    Chunk read(const QByteArray &bytes);

private:
    QString m_line; ///< the beginning of the line whose end has not come yet
};
