#include "account/Login.h"

#include "account/Limits.h"
#include "base/Addresses.h"
#include "base/Settings.h"
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

static QUrl apiUrl()
{
    const QString configured = getSetting(QStringLiteral("LOGIN/VER"));
    return QUrl(configured.isEmpty() ? QStringLiteral(KORVAN_API_URL) : configured, QUrl::TolerantMode);
}

LoginAnswer postLogin(const QByteArray &body, int limitMs)
{
    QNetworkAccessManager manager;
    QNetworkRequest request(apiUrl());
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/x-www-form-urlencoded"));
    request.setHeader(QNetworkRequest::ContentLengthHeader, body.size());
    request.setRawHeader("Accept-Encoding", "identity"); // a compressed answer could grow a thousandfold here
    QNetworkReply *reply = manager.post(request, body);
    reply->ignoreSslErrors();
    limitBody(*reply, kProfileLimit);
    Wait wait;
    wait.until(reply, &QNetworkReply::finished);
    if (!wait.run(limitMs)) {
        return {};
    }
    return {reply->readAll(), reply->error() != QNetworkReply::NoError};
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
