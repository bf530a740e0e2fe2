#pragma once

#include <QByteArray>
#include <QString>

class QNetworkReply;

/// The body of a web page, fetched through the application proxy while a local event loop runs; empty on any error.
/// TLS errors are ignored. It sets no limit of its own.
QByteArray GetPageDataByUrl(QString url);

/// The body of a reply that is finished; empty on any error, so that nobody takes a part for the whole.
QByteArray wholeBody(QNetworkReply &reply);
