#include "vpn/HelperOutput.h"

#include "common/Text.h"

#include <QList>

QString outputMessage(const QByteArray &output)
{
    const QString text = latin1UpToNul(output);
    return text.startsWith(QLatin1String(kErrorPrefix)) ? QLatin1Char(' ') + text : text;
}

static bool holds(const QString &chunk, const char *marker)
{
    return chunk.contains(QLatin1String(marker));
}

ServiceOutput classifyService(const QString &chunk)
{
    if (holds(chunk, "Success")) {
        return ServiceOutput::Success;
    }
    return holds(chunk, "Error") ? ServiceOutput::Error : ServiceOutput::Other;
}

SstpOutput classifySstp(const QString &chunk)
{
    if (holds(chunk, "remote IP address")) {
        return SstpOutput::Connected;
    }
    if (holds(chunk, "authentication failed") || holds(chunk, "bad username or password")) {
        return SstpOutput::AuthFailed;
    }
    return SstpOutput::Other;
}

static quint64 countAfter(const QByteArray &output, const QByteArray &marker)
{
    const int at = output.indexOf(marker);
    if (at < 0) {
        return 0;
    }
    const int start = at + marker.size();
    const int end = output.indexOf('\n', start);
    return output.mid(start, end < 0 ? -1 : end - start).trimmed().toULongLong();
}

ByteCount parseServiceCounts(const QByteArray &output)
{
    return {countAfter(output, "Recv "), countAfter(output, "Send ")};
}

std::optional<ByteCount> takeByteCount(QByteArray &buffer)
{
    static const QByteArray marker = QByteArrayLiteral(">BYTECOUNT:");
    std::optional<ByteCount> last;
    const int end = buffer.lastIndexOf('\n') + 1;
    const QList<QByteArray> lines = buffer.left(end).split('\n');
    buffer.remove(0, end);
    for (const QByteArray &line : lines) {
        const int at = line.lastIndexOf(marker);
        if (at < 0) {
            continue;
        }
        const QList<QByteArray> fields = line.mid(at + marker.size()).split(',');
        if (fields.size() >= 2) {
            last = ByteCount{fields.at(0).trimmed().toULongLong(), fields.at(1).trimmed().toULongLong()};
        }
    }
    return last;
}
