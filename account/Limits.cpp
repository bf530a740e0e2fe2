#include "account/Limits.h"

#include <QDebug>
#include <QFile>
#include <QNetworkReply>

void limitBody(QNetworkReply &reply, qint64 limit)
{
    const auto check = [&reply, limit](qint64 announced) {
        if (qMax(announced, reply.bytesAvailable()) > limit) {
            qDebug().noquote() << "WARNING: the answer of" << reply.url().host() << "is longer than" << limit
                               << "bytes and was given up";
            reply.abort();
        }
    };
    QObject::connect(&reply, &QNetworkReply::metaDataChanged, &reply,
                     [&reply, check] { check(reply.header(QNetworkRequest::ContentLengthHeader).toLongLong()); });
    QObject::connect(&reply, &QNetworkReply::readyRead, &reply, [check] { check(0); });
}

QString shownText(const QString &text)
{
    int end = qMin(text.size(), kShownLimit);
    for (int i = 0, lines = 0; i < end; ++i) {
        const bool lineEnds = text.at(i) == QLatin1Char('\n') || text.at(i) == QLatin1Char('\r');
        if (lineEnds && ++lines == kShownLines) {
            end = i;
        }
    }
    if (end == text.size()) {
        return text;
    }
    qDebug("WARNING: a text of %d characters is shown in part", text.size());
    return text.left(end) + QLatin1String("...");
}

QByteArray readFromProfile(const QString &path, qint64 limit)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    if (file.size() > limit) {
        qDebug().noquote() << "WARNING: of" << path << "only the first" << limit << "bytes are read";
    }
    return file.read(limit);
}
