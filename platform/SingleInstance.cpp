#include "platform/SingleInstance.h"

#include "common/AppPath.h"
#include "names/StateFiles.h"

#include <QDebug>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

SingleInstance::SingleInstance()
{
    const QString path = appPath(kInstanceFile);
    m_lock = open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (m_lock < 0) {
        qDebug().noquote() << "WARNING: can not open" << path << std::strerror(errno);
        return;
    }
    m_first = flock(m_lock, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    if (m_first) {
        m_watcher = std::make_unique<QFileSystemWatcher>(QStringList{path});
        connect(m_watcher.get(), &QFileSystemWatcher::fileChanged, this, &SingleInstance::startedAgain);
    }
}

SingleInstance::~SingleInstance()
{
    release();
}

void SingleInstance::release()
{
    if (m_lock >= 0) {
        close(m_lock);
        m_lock = -1;
    }
}

void SingleInstance::notifyFirst()
{
    if (pwrite(m_lock, "\n", 1, 0) != 1) {
        qDebug().noquote() << "WARNING: can not reach the running program" << std::strerror(errno);
    }
}
