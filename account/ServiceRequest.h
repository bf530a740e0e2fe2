#pragma once

#include <QByteArray>
#include <QNetworkRequest>
#include <QString>

class QNetworkAccessManager;
class QNetworkReply;

/// Asks for an address, by GET or, with a form, by POST; the body comes uncompressed and is given up beyond `limit`
/// bytes. TLS errors are ignored, as the service's certificate is its own. Where there are pins ("SERVICE/PINS" in
/// the settings file, or those of the build), a connection to one of the service's hosts is dropped before anything
/// of the request is sent unless it is encrypted and its certificate holds a pinned key. The reply then fails like
/// one from a host that can not be reached, and a log line tells why.
QNetworkReply *sendRequest(QNetworkAccessManager &manager, QNetworkRequest request, qint64 limit,
                           const QByteArray *form = nullptr);

/// Gives the body of a reply up beyond `limit` bytes, and its connection when that brings far more than it may.
void limitReply(QNetworkReply &reply, qint64 limit);

/// Shuts the connections of a reply that is not waited for any longer and waits, in a local event loop of at most
/// three seconds, until it has come to its end. A server that sends without a pause keeps the thread that reads them
/// busy; destroying the manager at once would stop the window for five seconds and leave that thread running.
void giveUp(QNetworkReply &reply);

/// Why sendRequest() has dropped the connection of this reply: a sentence, empty where it has not.
QString refusal(const QNetworkReply &reply);

/// The address of the account API: the one under "LOGIN/VER" in the settings file, or the deployed one.
QUrl apiUrl();

/// The SHA-256 of the public key of a certificate (DER), as its SubjectPublicKeyInfo, in hexadecimal. Empty for what
/// is no certificate.
QByteArray publicKeyPin(const QByteArray &certificate);
