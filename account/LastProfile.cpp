#include "account/LastProfile.h"

#include "account/ServerLists.h"
#include "common/AppPath.h"
#include "names/StateFiles.h"
#include "platform/Tool.h"

#include <QDebug>
#include <QDir>
#include <QDirIterator>
#include <QFile>

static QString lastFolder()
{
    return appPath(kLastProfileFolder);
}

static QString keptL2tpList()
{
    return lastFolder() + QLatin1String("/L2TP.txt");
}

static void removeFolder(const QString &folder)
{
    runToolInEventLoop(QStringLiteral("rm"), {QStringLiteral("-rf"), QStringLiteral("--"), folder});
}

ProfileAnswer profileAnswer(int status, const QByteArray &body)
{
    constexpr int redirect = 300;
    constexpr int clientError = 400;
    constexpr int serverError = 500;
    constexpr int loginToNetwork = 511;
    const QByteArray begin = body.left(1024);
    if (body.contains("invalid username or password")) {
        return ProfileAnswer::Rejected;
    }
    if (status >= serverError && status != loginToNetwork) {
        return ProfileAnswer::Outage;
    }
    const bool isPage = begin.mid(begin.startsWith("\xEF\xBB\xBF") ? 3 : 0).trimmed().startsWith('<');
    const bool leadsAway = (status >= redirect && status < clientError) || status == loginToNetwork;
    return isPage || leadsAway ? ProfileAnswer::WebPage : ProfileAnswer::Damaged;
}

/// Moves what the clearing of a profile's folder spares from one folder to another.
static void moveSpared(const QString &from, const QString &to)
{
    const QDir source(from);
    for (const QString &name :
         source.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted)) {
        if (name.startsWith(QLatin1Char('.')) || name.contains(QLatin1String("custom"), Qt::CaseInsensitive)) {
            QFile::rename(source.filePath(name), QDir(to).filePath(name));
        }
    }
}

void keepLastProfile()
{
    if (hasLastProfile() || !hasOpenVPNServers()) {
        return;
    }
    removeFolder(lastFolder());
    if (!QDir().rename(profileFolder(), lastFolder())) {
        qDebug("WARNING: the profile can not be kept before a new one takes its place");
        return;
    }
    QDir().mkpath(profileFolder());
    moveSpared(lastFolder(), profileFolder());
    QFile::copy(l2tpListPath(), keptL2tpList());
}

void forgetLastProfile()
{
    removeFolder(lastFolder());
}

bool hasLastProfile(const QString &user)
{
    const bool isTheirs =
        user.isEmpty() || QFile::exists(lastFolder() + QLatin1Char('/') + user + QLatin1String(".crt"));
    return isTheirs && QDirIterator(lastFolder(), {QStringLiteral("*.ovpn")}).hasNext();
}

bool useLastProfile()
{
    moveSpared(profileFolder(), lastFolder());
    removeFolder(profileFolder());
    if (!QDir().rename(lastFolder(), profileFolder())) {
        return false;
    }
    const QString list = profileFolder() + QLatin1String("L2TP.txt");
    if (QFile::exists(list)) {
        QFile::remove(l2tpListPath());
        QFile::rename(list, l2tpListPath());
    }
    return true;
}
