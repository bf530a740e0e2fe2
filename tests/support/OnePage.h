#pragma once

#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>

/// A web server of one page on 127.0.0.1: it keeps the request and, once its head is there, sends `answer`; then
/// it closes the connection unless the answer is to be one that never ends.
class OnePage : public QTcpServer
{
public:
    /// Any port that is free, unless one is named.
    explicit OnePage(const QByteArray &answer, bool endless = false, quint16 port = 0)
    {
        if (!listen(QHostAddress::LocalHost, port)) {
            qFatal("no web server on port %d: %s", port, qPrintable(errorString()));
        }
        connect(this, &QTcpServer::newConnection, this, [this, answer, endless] {
            QTcpSocket *socket = nextPendingConnection();
            request.clear();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket, answer, endless] {
                request += socket->readAll();
                if (!request.contains("\r\n\r\n")) {
                    return;
                }
                socket->write(answer);
                if (!endless) {
                    socket->disconnectFromHost();
                }
            });
        });
    }

    QString url() const { return QStringLiteral("http://127.0.0.1:%1/api").arg(serverPort()); }

    /// How many connections are open.
    int open() const
    {
        const auto sockets = findChildren<QTcpSocket *>();
        return int(std::count_if(sockets.cbegin(), sockets.cend(), [](const QTcpSocket *socket) {
            return socket->state() == QAbstractSocket::ConnectedState;
        }));
    }

    QByteArray request; ///< the last one
};

/// A page of HTTP with this body.
inline QByteArray ok(const QByteArray &body)
{
    return "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}
