#pragma once

#include "controller/Status.h"

#include <QPersistentModelIndex>
#include <QProcess>

#include <functional>

class Korvan;

namespace Ui {
class Korvan;
}

/// The tests of the servers, ping and speed, and their table. They wait in event loops, in which the window may go;
/// its signal testCancel() ends a wait.
class ServerTests
{
public:
    /// `status` is the window's, as it stands at any time.
    ServerTests(Korvan *window, Ui::Korvan *form, const KORVANSTATUS &status);

    /// Gives the empty table its columns. No test runs.
    void prepareTable();

    /// Makes these the servers of the table, but those that are to be skipped.
    void setServers(const QStringList &names, const QStringList &skipped);

    /// What the buttons do: each refuses, with a box, while a tunnel is in use.
    void pingAll();
    void pingSelected();
    void testSpeed();

    /// Sorts by a column, down and up by turns; not while a test runs.
    void sortBy(int column);

    /// The average round trip of `count` pings in whole milliseconds, 0 when no reply came, -1 when there is no
    /// output, as after a cancel. Stores the loss in per cent unless it is -1.
    int ping(const QString &host, int count, double &loss);

    /// The speed of a download in bytes per millisecond, also of one that was canceled; -1 when nothing came.
    int downloadSpeedOf(const QString &url);

private:
    class Run;
    enum Column { kName, kPing, kLoss, kSpeed };

    static void setCell(const QPersistentModelIndex &server, Column column, const QString &text);
    bool isRefused() const;
    void testSelected(const std::function<void(const QPersistentModelIndex &server, const QString &host)> &test);

    Korvan *m_window;
    Ui::Korvan *m_form;
    const KORVANSTATUS &m_status;
    QProcess m_process; ///< the ping that runs
};
