#pragma once

#include <QEventLoop>
#include <QTimer>

/// A wait in a local event loop: the caller blocks, the GUI thread's events go on being delivered.
///
///     Wait wait;
///     wait.until(reply, &QNetworkReply::finished);
///     if (!wait.run(10000)) { ... the limit passed first ... }
///
/// A signal that is emitted between until() and run() also ends the wait.
class Wait
{
public:
    /// Makes `signal` of `sender` one of the events that end the wait.
    template <typename Sender, typename Signal> void until(const Sender *sender, Signal signal)
    {
        QObject::connect(sender, signal, &m_loop, [this] { end(); });
    }

    /// Runs the event loop until one of the signals came (returns true) or `limitMs` milliseconds passed (returns
    /// false). A negative limit waits without one.
    bool run(int limitMs = -1);

private:
    void end();

    QEventLoop m_loop;
    bool m_ended = false;
};
