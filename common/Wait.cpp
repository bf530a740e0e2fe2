#include "common/Wait.h"

bool Wait::run(int limitMs)
{
    if (m_ended) {
        return true;
    }
    m_clock.start();
    QTimer limit;
    if (limitMs >= 0) {
        limit.setSingleShot(true);
        limit.setTimerType(Qt::PreciseTimer); // a coarse one may end up to 5 % early
        QObject::connect(&limit, &QTimer::timeout, &m_loop, [this] { quit(); });
        limit.start(limitMs);
    }
    m_loop.exec();
    quit(); // where the application's end has ended the loop
    return m_ended;
}

void Wait::end()
{
    m_ended = true;
    quit();
}

void Wait::quit()
{
    if (!m_quit && m_clock.isValid()) {
        m_waitedMs = m_clock.elapsed();
    }
    m_quit = true;
    m_loop.quit();
}
