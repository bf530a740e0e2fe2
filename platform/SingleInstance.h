#pragma once

#include <QFileSystemWatcher>
#include <QObject>

#include <memory>

/// One running program for each application folder. The first one holds an advisory lock on the file "/instance" for
/// its whole life; the kernel drops the lock with the process, so a crash leaves nothing stale. A later start writes
/// to the file, which tells the first one to come to the front.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    SingleInstance();
    ~SingleInstance() override;

    /// Whether this process is the first one. Also true, with one log line, where the file can not be opened: a
    /// program that can not lock must still start.
    bool isFirst() const { return m_first; }

    /// Tells the first one that another start was tried; it emits startedAgain().
    void notifyFirst();

    /// Lets another start be the first one: for a run that opens no window.
    void release();

signals:
    /// Another start of the program was tried.
    void startedAgain();

private:
    int m_lock = -1;
    bool m_first = true;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
};
