#pragma once

#include <QPersistentModelIndex>
#include <QPointer>

class QWidget;

namespace Ui {
class Korvan;
}

/// While it lives a test of the servers runs: of the test buttons only Cancel is active, and the rows of the table
/// keep their places. It may outlive the window.
class TestRun
{
public:
    TestRun(QWidget *window, Ui::Korvan *form);
    ~TestRun();
    TestRun(const TestRun &) = delete;
    TestRun &operator=(const TestRun &) = delete;

private:
    void showRunning(bool running);

    QPointer<QWidget> m_window;
    Ui::Korvan *m_form;
};

/// Columns of the table of servers.
enum ServerColumn { kNameColumn, kPingColumn, kLossColumn, kSpeedColumn };

/// Writes a text into a column of a server's row; does nothing once the row is gone.
void setServerCell(const QPersistentModelIndex &server, ServerColumn column, const QString &text);
