#include <QThread>

#include <atomic>
#include <climits>
#include <dlfcn.h>

/// Tells the thread sanitizer what it does not see inside Qt: that a thread's end comes before the return of a wait
/// for it. These functions stand before Qt's own of the same names in every test that is built with the sanitizer.
static std::atomic<int> ends;

template <typename Own> static Own qtOwn(const char *name)
{
    return reinterpret_cast<Own>(dlsym(RTLD_NEXT, name));
}

void QThread::start(Priority priority)
{
    static const auto own = qtOwn<void (*)(QThread *, Priority)>("_ZN7QThread5startENS_8PriorityE");
    connect(
        this, &QThread::finished, this, [] { ++ends; }, Qt::DirectConnection);
    own(this, priority);
}

bool QThread::wait(QDeadlineTimer limit)
{
    static const auto own = qtOwn<bool (*)(QThread *, QDeadlineTimer)>("_ZN7QThread4waitE14QDeadlineTimer");
    const bool ended = own(this, limit);
    ++ends;
    return ended;
}

bool QThread::wait(unsigned long limitMs)
{
    return wait(limitMs == ULONG_MAX ? QDeadlineTimer(QDeadlineTimer::Forever) : QDeadlineTimer(qint64(limitMs)));
}
