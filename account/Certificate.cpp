#include "account/Certificate.h"

#include "account/Limits.h"
#include "account/Login.h"
#include "account/ServerLists.h"
#include "common/Dates.h"
#include "common/Text.h"

QString certificatePath(const QString &user)
{
    return isUserName(user) ? profileFolder() + user + QLatin1String(".crt") : QString();
}

QString GetCertExpiredDateTime(QString path)
{
    return GetStringBetween(latin1UpToNul(readFromProfile(path)), QStringLiteral("Not After : "),
                            QStringLiteral("GMT"))
        .trimmed();
}

bool isExpired(const QString &dateText, const QDateTime &now)
{
    const QDateTime expiry = GetDateTimeFromString(dateText);
    return !expiry.isValid() || expiry < now;
}
