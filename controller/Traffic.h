#pragma once

#include "stats/TransferTotals.h"

#include <QDateTime>
#include <QTimer>

class VPNClient;

namespace Ui {
class Korvan;
}

/// The traffic figures of the dashboard: of the session, of the month, of all time, and the rate. The day's are kept
/// and shown nowhere. What the tunnel carries is counted by the engine.
class Traffic
{
public:
    Traffic(Ui::Korvan *form, VPNClient *engine);

    /// Takes the totals over that earlier runs have stored, and shows them.
    void load();

    /// An attempt to connect begins: the session's figures start at 0.
    void beginSession();

    /// The tunnel is up: the first tick is due.
    void startTicks() { m_timer.start(0); }

    /// Its time-out is the next tick.
    const QTimer *timer() const { return &m_timer; }

    /// One tick: shows what came since the last one as rates of a second. Without a connection the rates are 0 and no
    /// further tick follows.
    void tick(bool connected);

    /// Adds bytes to all figures and shows them. On a new day or in a new month they also go into the file.
    void add(quint64 received, quint64 sent, const QDate &today = QDate::currentDate());

    /// The connection has ended: shows, stores and logs what it carried, once, and no rates any more.
    void endSession();

    /// Adds what the file does not have yet to the stored totals, for a window that ends in whatever status.
    void storeSession();

    /// Empties the session's labels.
    void clearSession();

    /// Sets everything that is shown to 0; the stored totals come back at the next start.
    void reset();

    /// Deletes the stored totals and counts from zero on.
    void deleteStored();

private:
    struct Bytes
    {
        quint64 received = 0;
        quint64 sent = 0;
    };

    /// What the engine has counted since it was asked last.
    Bytes takeNew();
    void showRates(const Bytes &bytes);
    void showTotals(const TransferCounters &counters);
    void store();

    Ui::Korvan *m_form;
    VPNClient *m_engine;
    TransferCounters m_counters;
    Bytes m_counted;                                      ///< by the engine, of what is in the figures
    Bytes m_unstored;                                     ///< of the figures, what the file does not have
    QDateTime m_startTime = QDateTime::currentDateTime(); ///< of the program, then of the last attempt to connect
    QTimer m_timer;
};
