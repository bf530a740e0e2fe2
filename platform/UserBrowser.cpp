#include "platform/UserBrowser.h"

#include <QDebug>
#include <QDesktopServices>
#include <QFile>
#include <QProcess>

#include <pwd.h>
#include <unistd.h>

static constexpr const char *kSchemes[] = {"http", "https"};

static const passwd *userBehindRoot()
{
    for (const char *name : {"SUDO_UID", "PKEXEC_UID"}) {
        bool isNumber = false;
        const uint uid = qEnvironmentVariable(name).toUInt(&isNumber);
        if (isNumber) {
            return getpwuid(uid);
        }
    }
    return getpwnam(qgetenv("USER").constData());
}

UserBrowser::UserBrowser()
{
    const passwd *user = geteuid() == 0 ? userBehindRoot() : nullptr;
    if (user == nullptr || user->pw_uid == 0) {
        return;
    }
    for (const char *scheme : kSchemes) {
        QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "open");
    }
}

UserBrowser::~UserBrowser()
{
    for (const char *scheme : kSchemes) {
        QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
    }
}

void UserBrowser::open(const QUrl &url)
{
    const passwd *user = userBehindRoot();
    if (user == nullptr) {
        return;
    }
    QProcessEnvironment environment;
    for (const char *name : {"DISPLAY", "XAUTHORITY", "LANG"}) {
        if (qEnvironmentVariableIsSet(name)) {
            environment.insert(QString::fromLatin1(name), qEnvironmentVariable(name));
        }
    }
    const QString runtime = QStringLiteral("/run/user/%1").arg(user->pw_uid);
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime);
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=%1/bus").arg(runtime));
    environment.insert(QStringLiteral("HOME"), QFile::decodeName(user->pw_dir));
    environment.insert(QStringLiteral("USER"), QString::fromLocal8Bit(user->pw_name));
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/local/bin:/usr/bin:/bin"));
    QProcess browser;
    browser.setProcessEnvironment(environment);
    browser.setProgram(QStringLiteral("/usr/bin/setpriv"));
    browser.setArguments({QStringLiteral("--reuid=%1").arg(user->pw_uid),
                          QStringLiteral("--regid=%1").arg(user->pw_gid), QStringLiteral("--init-groups"),
                          QStringLiteral("xdg-open"), url.toString(QUrl::FullyEncoded)});
    if (!browser.startDetached()) {
        qDebug().noquote() << "WARNING: can not open" << url.toString() << browser.errorString();
    }
}
