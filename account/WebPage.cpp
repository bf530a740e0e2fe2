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
    const bool whole = wait.run() && reply->error() == QNetworkReply::NoError;
    return whole ? reply->readAll() : QByteArray();
}
