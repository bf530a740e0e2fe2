#include "tests/support/OnePage.h"

#include <QTcpSocket>

static bool isWhole(const QByteArray &request)
{
    const QByteArray name = "\r\nContent-Length: ";
    const int head = request.indexOf("\r\n\r\n");
    const int length = request.indexOf(name);
    const int body = length < 0 ? 0 : request.mid(length + name.size()).split('\r').first().toInt();
    return head >= 0 && request.size() == head + 4 + body;
}

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
            if (!isWhole(request)) {
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
