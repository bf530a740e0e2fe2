#pragma once

#include <QByteArray>
#include <QString>

class QNetworkReply;
class QNetworkRequest;

/// The body of a web page, fetched through the application proxy while a local event loop runs; empty on any error,
/// or when it is longer than a page may be. TLS errors are ignored, and pins are held to (sendRequest()). It sets no
/// time limit of its own.
QByteArray GetPageDataByUrl(QString url);

/// The body of a reply that is finished; empty on any error, so that nobody takes a part for the whole.
QByteArray wholeBody(QNetworkReply &reply);

/// A GET for the address that asks for the body as it is: a compressed one could grow a thousandfold here.
QNetworkRequest plainRequest(const QString &url);
