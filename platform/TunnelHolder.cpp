#include "platform/TunnelHolder.h"

#include "names/Names.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

Refusal heldBy(const QByteArray &user)
{
    bool isNumber = false;
    const uint number = user.toUInt(&isNumber);
    const passwd *holder = isNumber ? getpwuid(number) : nullptr;
    if (holder == nullptr) {
        return {
            QT_TRANSLATE_NOOP("RootPart", "Somebody else is using Korvan on this computer, and alone can end that."),
            {}};
    }
    return {QT_TRANSLATE_NOOP("RootPart", "%1 is using Korvan on this computer, and alone can end that."),
            QString::fromLocal8Bit(holder->pw_name)};
}

Refusal takeTunnel()
{
    mkdir(kJournalFolder, 0700);
    const QByteArray path = QByteArray(kJournalFolder) + '/' + kTunnelHolder;
    // Never closed: it ends with the process.
    const int lock = open(path.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (lock < 0) {
        return {};
    }
    if (flock(lock, LOCK_EX | LOCK_NB) == 0) {
        const QByteArray self = QByteArray::number(getuid());
        const bool written = ftruncate(lock, 0) == 0 && write(lock, self.constData(), 1) == 1;
        Q_UNUSED(written)
        return {};
    }
    char number[16] = {};
    const ssize_t length = pread(lock, number, sizeof number - 1, 0);
    close(lock);
    return heldBy(QByteArray(number, static_cast<int>(qMax<ssize_t>(length, 0))));
}
