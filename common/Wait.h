#pragma once

#include <QElapsedTimer>
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

    /// How many milliseconds it took until run() was to return. It does return later where something that it
    /// delivered, as a message box, has opened an event loop of its own.
    qint64 waitedMs() const { return m_waitedMs; }

private:
    void end();
    void quit();

    QEventLoop m_loop;
    QElapsedTimer m_clock;
    qint64 m_waitedMs = 0;
    bool m_ended = false;
    bool m_quit = false;
};
