#include "account/SavedLogin.h"

#include "common/AppPath.h"
#include "common/Digest.h"
#include "common/StateFile.h"
#include "names/StateFiles.h"

#include <QDebug>

static constexpr int kLongestText = 255;

QString encode(QString plain)
{
    const QByteArray input = plain.toLocal8Bit();
    if (input.size() > kLongestText) {
        qDebug().noquote() << "WARNING: a text of" << input.size() << "bytes is too long to be stored, the limit is"
                           << kLongestText;
        return {};
    }
    char output[2 * kLongestText + 1] = {};
    simple_encode(input.constData(), output);
    return QString::fromLatin1(output);
}

QString decode(QString scrambled)
{
    const QByteArray input = scrambled.toLocal8Bit();
    if (input.size() > 2 * kLongestText) {
        return {};
    }
    char output[kLongestText + 1] = {};
    simple_decode(input.constData(), output);
    return QString::fromLocal8Bit(output);
}

QString savedLoginPath()
{
    return appPath(kLoginFile);
}

void writeSavedLogin(const SavedLogin &login)
{
    const QString user = encode(login.user);
    const QString password = encode(login.password);
    if (user.isEmpty() != login.user.isEmpty() || password.isEmpty() != login.password.isEmpty()) {
        return;
    }
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(kStreamVersion);
    stream << user << password;
    writeWhole(savedLoginPath(), bytes);
}

SavedLogin readSavedLogin()
{
    QDataStream stream(readWhole(savedLoginPath()));
    stream.setVersion(kStreamVersion);
    QString user;
    QString password;
    stream >> user >> password;
    return {decode(user), decode(password)};
}
