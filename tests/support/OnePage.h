#pragma once

#include <QTcpServer>

/// A web server of one page on 127.0.0.1: it keeps the request and, once its head is there, sends `answer`; then
/// it closes the connection unless the answer is to be one that never ends.
class OnePage : public QTcpServer
{
public:
    /// Any port that is free, unless one is named.
    explicit OnePage(const QByteArray &answer, bool endless = false, quint16 port = 0);

    QString url() const { return QStringLiteral("http://127.0.0.1:%1/api").arg(serverPort()); }

    QByteArray answer;
    bool endless;
    QByteArray request; ///< the last one
};

/// A page of HTTP with this body.
QByteArray ok(const QByteArray &body);
