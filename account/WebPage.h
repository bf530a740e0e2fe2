#pragma once

#include <QByteArray>
#include <QString>

/// The body of a web page, fetched through the application proxy while a local event loop runs; empty on any error.
/// TLS errors are ignored. It sets no limit of its own.
QByteArray GetPageDataByUrl(QString url);
