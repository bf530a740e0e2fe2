#include "tests/support/OnePage.h"

#include <QTcpSocket>

OnePage::OnePage(const QByteArray &bytes, bool isEndless, quint16 port) : answer(bytes), endless(isEndless)
{
    if (!listen(QHostAddress::LocalHost, port)) {
        qFatal("no web server on port %d: %s", port, qPrintable(errorString()));
    }
    connect(this, &QTcpServer::newConnection, this, [this] {
        QTcpSocket *socket = nextPendingConnection();
        request.clear();
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            request += socket->readAll();
            if (!request.contains("\r\n\r\n")) {
                return;
            }
            if (request.startsWith("CONNECT ")) {
                request.clear();
                socket->write("HTTP/1.1 200 OK\r\n\r\n");
                return;
            }
            socket->write(answer);
            if (!endless) {
                socket->disconnectFromHost();
            }
        });
    });
}

QByteArray ok(const QByteArray &body)
{
    return "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}
