#pragma once

#include "controller/Korvan.h"
#include "tests/support/BoxAnswers.h"
#include "tests/support/OwnNetwork.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

#include <memory>

/// Encoding and look as the program sets them.
void prepareApplication(QApplication &application);

/// The real window on the offscreen platform, in an application folder of its own, with stand-ins for the system
/// tools first in PATH. Route commands are noted in "/routes", a line each.
class WindowFixture
{
public:
    /// Empties the application folder's state and puts the stand-ins in place; the machine's gateway is 198.51.100.1.
    WindowFixture();

    /// Creates the window, waits until its start is done, and returns it.
    Korvan &start();

    /// Marks a user as logged in: a profile with these servers and a valid certificate of "alice" are on disk.
    static void putProfile(const QStringList &servers);

    /// The widget of that object name; the test fails without it.
    template <typename Widget> Widget *find(const char *name) const
    {
        auto *widget = m_window->findChild<Widget *>(QString::fromLatin1(name));
        if (widget == nullptr) {
            qFatal("no widget %s", name);
        }
        return widget;
    }

    /// The window's engine.
    VPNClient &engine() const;

    /// Presses a button as the user does: only when it is shown and enabled.
    bool press(const char *button) const;

    /// What the route command was asked so far, a line a call; forgets it.
    static QByteArray takeRoutes();

    BoxAnswers boxes;

private:
    std::unique_ptr<Korvan> m_window;
};

/// What main() does in a window test: runs the test object in an application set up like the program's own.
template <typename Test> int runWindowTest(int argc, char *argv[])
{
    enterOwnNetwork();
    QApplication application(argc, argv);
    prepareApplication(application);
    Test test;
    return QTest::qExec(&test, argc, argv);
}
