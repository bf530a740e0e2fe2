#pragma once

#include "tests/support/OwnNetwork.h"
#include "tests/window/ClientWindow.h"

/// The window with stand-ins for the system tools first in PATH. Route commands are noted in "/routes", a line each.
class WindowFixture : public ClientWindow
{
public:
    /// Puts the stand-ins in place; the machine's gateway is 198.51.100.1 and nothing answers in the network.
    WindowFixture();

    /// Marks a user as logged in: a profile with these servers and a valid certificate of "alice" are on disk.
    static void putProfile(const QStringList &servers);

    /// The window of a user who is logged in and has these servers; it plays no sounds.
    Korvan &startLoggedIn(const QStringList &servers);

    /// The window's engine.
    VPNClient &engine() const;

    /// What the route command was asked so far, a line a call; forgets it.
    static QByteArray takeRoutes();
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
