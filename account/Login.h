#pragma once

#include <QByteArray>
#include <QString>

/// Whether a text may be a user's name. Files are named after users, so that none may lead out of a folder.
bool isUserName(const QString &text);

/// How long the account API may take to answer, in milliseconds.
constexpr int kLoginLimitMs = 10000;

/// The body of the login request: a form of two fields in UTF-8, with every byte percent-encoded that is not
/// unreserved in a URL.
QByteArray loginBody(const QString &user, const QString &password);

/// What came back from the account API.
struct LoginAnswer
{
    /// What came, also of an answer that was cut; empty when the limit passed first or it was longer than a profile
    /// may be.
    QByteArray body;
    bool networkError = false; ///< also false when the limit passed first
    int status = 0;            ///< of HTTP; 0 when there was none
    QString refusal;           ///< why this side has dropped the connection: a sentence, empty where it has not
};

/// Posts the form to the account API: the address under "LOGIN/VER" in the settings file, or the deployed one. Waits
/// in a local event loop for at most `limitMs`. TLS errors are ignored, and pins are held to (sendRequest()).
LoginAnswer postLogin(const QByteArray &body, int limitMs = kLoginLimitMs);

/// What an answer is, the first that applies.
enum class LoginReply {
    NoAnswer,  ///< nothing came in time
    Rejected,  ///< the service says that user name or password are wrong
    Profile,   ///< a ZIP archive
    Malformed, ///< anything else, such as an error page or no body at all
};
LoginReply classifyLogin(const LoginAnswer &answer);
