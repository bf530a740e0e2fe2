#include "account/WebPage.h"

#include "account/Limits.h"
#include "account/ServiceRequest.h"
#include "common/Wait.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrl>

QByteArray GetPageDataByUrl(QString url)
{
    QNetworkAccessManager manager;
    QNetworkReply *reply = sendRequest(manager, QNetworkRequest(QUrl(url)), kPageLimit);
    Wait wait;
    wait.until(reply, &QNetworkReply::finished);
    return wait.run() ? wholeBody(*reply) : QByteArray();
}

QByteArray wholeBody(QNetworkReply &reply)
{
    const QByteArray body = reply.readAll();
    // A connection that closes too early is not always reported as an error.
    const QVariant length = reply.header(QNetworkRequest::ContentLengthHeader);
    const bool whole = !length.isValid() || length.toLongLong() == body.size();
    return whole && reply.error() == QNetworkReply::NoError ? body : QByteArray();
}

QNetworkRequest plainRequest(const QString &url)
{
    QNetworkRequest request{QUrl(url)};
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}
