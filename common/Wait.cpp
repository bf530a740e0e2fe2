#include "common/Wait.h"

bool Wait::run(int limitMs)
{
    if (m_ended) {
        return true;
    }
    QTimer limit;
    if (limitMs >= 0) {
        limit.setSingleShot(true);
        limit.setTimerType(Qt::PreciseTimer); // a coarse one may end up to 5 % early
        QObject::connect(&limit, &QTimer::timeout, &m_loop, &QEventLoop::quit);
        limit.start(limitMs);
    }
    m_loop.exec();
    return m_ended;
}

void Wait::end()
{
    m_ended = true;
    m_loop.quit();
}
