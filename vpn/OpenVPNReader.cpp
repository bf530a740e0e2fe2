#include "vpn/OpenVPNReader.h"

#include "common/Text.h"
#include "names/PastTunnel.h"
#include "vpn/HelperOutput.h"

#include <QRegularExpression>

#include <algorithm>

/// As much of a line's beginning as can lie before a marker, and more.
static constexpr int kRemembered = 256;

/// The prompts have no line end, so that what is printed after the answer stands behind them.
static QRegularExpressionMatch matchLead(const QString &line)
{
    static const QRegularExpression lead(QStringLiteral(
        "^((?:(?:Enter )?Auth (?:Username|Password):\\s*+)*+)"
        "(?:(?:\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d|\\w{3} \\w{3} [ \\d]\\d \\d\\d:\\d\\d:\\d\\d \\d{4}) "
        "(?:us=\\d+ )?)?+"));
    return lead.match(line);
}

QString openVPNWords(const QString &line)
{
    return line.mid(matchLead(line).capturedEnd());
}

/// What a line says, of which the first `known` characters came with an earlier chunk.
static OpenVPNOutput classify(const QString &line, int known)
{
    const QRegularExpressionMatch lead = matchLead(line);
    const QString prompts = lead.captured(1);
    if (prompts.indexOf(QLatin1String("Auth Username:"), known) >= 0) {
        return OpenVPNOutput::WantsUser;
    }
    if (prompts.indexOf(QLatin1String("Auth Password:"), known) >= 0) {
        return OpenVPNOutput::WantsPassword;
    }
    const auto says = [&](const char *marker, const char *before = "") {
        const QLatin1String text(before);
        const int start = lead.capturedEnd();
        return line.midRef(start).startsWith(text) && start + text.size() >= known &&
               line.midRef(start + text.size()).startsWith(QLatin1String(marker));
    };
    if (says("AUTH_FAILED") || says("AUTH_FAILED", "AUTH: Received control message: ")) {
        return OpenVPNOutput::AuthFailed;
    }
    if (says("Initialization Sequence Completed")) {
        return line.contains(QLatin1String("With Errors")) ? OpenVPNOutput::TunnelFailed : OpenVPNOutput::TunnelUp;
    }
    return OpenVPNOutput::Other;
}

/// Whether a chunk that goes on within a line would by itself be read as words of OpenVPN's.
static bool misleads(const QString &chunk)
{
    const QString words = openVPNWords(chunk);
    return words.startsWith(QLatin1String(kPastTunnel)) || words.startsWith(QLatin1String("UDPv4 link remote:")) ||
           words.startsWith(QLatin1String("TCPv4_CLIENT link remote:"));
}

OpenVPNReader::Chunk OpenVPNReader::read(const QByteArray &bytes)
{
    const QString text = latin1UpToNul(bytes);
    Chunk chunk{outputMessage(bytes), OpenVPNOutput::Other};
    if (!m_line.isEmpty() && misleads(text)) {
        chunk.message.prepend(QLatin1Char(' '));
    }
    int known = m_line.size();
    const QStringList lines = (m_line + text).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        chunk.output = std::min(chunk.output, classify(line, known));
        known = 0;
    }
    if (chunk.output == OpenVPNOutput::WantsUser || chunk.output == OpenVPNOutput::WantsPassword) {
        m_line.clear(); // the answer ends it
        return chunk;
    }
    const int end = bytes.lastIndexOf('\n') + 1;
    const QString open = QString::fromLatin1(bytes.mid(end));
    m_line = (end > 0 ? open : m_line + open).left(kRemembered);
    return chunk;
}
