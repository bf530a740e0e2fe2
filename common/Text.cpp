#include "common/Text.h"

#include <QDebug>
#include <QStringList>

#include <climits>

static void dropTrailingLetter(QString &version)
{
    if (!version.isEmpty() && version.back().isLetter()) {
        version.chop(1);
    }
}

int VersionCompare(QString server, QString current)
{
    qDebug() << "Version Server:" << server;
    qDebug() << "Version Current:" << current;
    if (current.isEmpty()) {
        return 0;
    }
    dropTrailingLetter(server);
    dropTrailingLetter(current);
    const QStringList serverParts = server.split(QLatin1Char('.'));
    const QStringList currentParts = current.split(QLatin1Char('.'));
    for (int i = 0; i < serverParts.size(); ++i) {
        const qint64 difference = qint64(serverParts.at(i).toInt()) - currentParts.value(i).toInt();
        if (difference != 0) {
            return static_cast<int>(qBound<qint64>(INT_MIN, difference, INT_MAX));
        }
    }
    return 0;
}

QString GetStringBetween(const QString &source, const QString &open, const QString &close)
{
    const int start = source.indexOf(open) + open.length();
    const int end = source.indexOf(close, start);
    if (start < 0 || end < 0) {
        return {};
    }
    return source.mid(start, end - start);
}

QString UrlFormatString(const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit();
    return QString::fromLatin1(bytes.isEmpty() ? QByteArray() : '%' + bytes.toHex('%').toUpper());
}

QString FormatDataSize(quint64 bytes)
{
    if (bytes < 1024) {
        return QString::number(bytes) + QLatin1String("B");
    }
    if (bytes < 1024 * 1024) {
        return QString::number(bytes >> 10) + QLatin1String("KB");
    }
    return QString::number(bytes >> 20) + QLatin1String("MB");
}

QString latin1UpToNul(const QByteArray &bytes)
{
    const int nul = bytes.indexOf('\0');
    return QString::fromLatin1(bytes.constData(), nul < 0 ? bytes.size() : nul);
}
