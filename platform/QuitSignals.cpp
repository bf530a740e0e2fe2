#include "platform/QuitSignals.h"

#include <QCoreApplication>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

static constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};
static int s_writeEnd = -1; ///< for the handler, which may do nothing but write

static void wakeEventLoop(int /*signal*/)
{
    const ssize_t written = write(s_writeEnd, "", 1);
    Q_UNUSED(written)
}

QuitSignals::QuitSignals()
{
    if (pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    s_writeEnd = m_pipe[1];
    m_notifier = std::make_unique<QSocketNotifier>(m_pipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, [this] {
        m_notifier->setEnabled(false);
        QCoreApplication::quit();
    });
    struct sigaction action = {};
    action.sa_handler = wakeEventLoop;
    action.sa_flags = SA_RESTART;
    for (const int signal : kSignals) {
        sigaction(signal, &action, nullptr);
    }
}

QuitSignals::~QuitSignals()
{
    for (const int signal : kSignals) {
        std::signal(signal, SIG_DFL);
    }
    close(m_pipe[0]);
    close(m_pipe[1]);
}
