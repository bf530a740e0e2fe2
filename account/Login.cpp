#include "account/Login.h"

#include "account/Limits.h"
#include "account/ServiceRequest.h"
#include "common/Wait.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrl>

bool isUserName(const QString &text)
{
    return !text.contains(QLatin1Char('/')) && !text.contains(QLatin1String(".."));
}

QByteArray loginBody(const QString &user, const QString &password)
{
    return "username=" + QUrl::toPercentEncoding(user) + "&password=" + QUrl::toPercentEncoding(password);
}

LoginAnswer postLogin(const QByteArray &body, int limitMs)
{
    QNetworkAccessManager manager;
    QNetworkRequest request(apiUrl());
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/x-www-form-urlencoded"));
    request.setHeader(QNetworkRequest::ContentLengthHeader, body.size());
    QNetworkReply *reply = sendRequest(manager, request, kProfileLimit, &body);
    Wait wait;
    wait.until(reply, &QNetworkReply::finished);
    if (!wait.run(limitMs)) {
        giveUp(*reply);
        return {};
    }
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return {reply->readAll(), reply->error() != QNetworkReply::NoError, status, refusal(*reply)};
}

LoginReply classifyLogin(const LoginAnswer &answer)
{
    if (answer.body.isEmpty() && !answer.networkError) {
        return LoginReply::NoAnswer;
    }
    if (answer.body.contains("invalid username or password")) {
        return LoginReply::Rejected;
    }
    return answer.body.startsWith("PK") ? LoginReply::Profile : LoginReply::Malformed;
}
