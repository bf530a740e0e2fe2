#pragma once

#include <QSocketNotifier>

#include <memory>

/// While it lives, SIGTERM, SIGINT and SIGHUP end the event loop like the user's own "Exit", so that a connection is
/// closed and routes are restored before the process goes. Child processes get the signals' default actions.
class QuitSignals
{
public:
    QuitSignals();
    ~QuitSignals();

private:
    int m_pipe[2] = {-1, -1};
    std::unique_ptr<QSocketNotifier> m_notifier;
};
