#include "account/WebPage.h"

#include "common/Wait.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrl>

QByteArray GetPageDataByUrl(QString url)
{
    QNetworkAccessManager manager;
    QNetworkReply *reply = manager.get(QNetworkRequest(QUrl(url)));
    reply->ignoreSslErrors();
    Wait wait;
    wait.until(reply, &QNetworkReply::finished);
    return wait.run() ? wholeBody(*reply) : QByteArray();
}

QByteArray wholeBody(QNetworkReply &reply)
{
    return reply.error() == QNetworkReply::NoError ? reply.readAll() : QByteArray();
}
