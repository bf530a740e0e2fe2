#pragma once

#include "tests/support/TestFiles.h"
#include "tests/window/ClientWindow.h"

/// The window on the subscriber's machine of the lab: the real tools, helpers and web pages.
class LabWindow : public ClientWindow
{
public:
    /// Makes the service forget all orders and requests, and puts the tools of the bundle into the application
    /// folder.
    LabWindow();

    /// The test fails when boxes have not come, or others came than were expected.
    ~LabWindow();

    /// Fills in the login page and presses pbLogin; returns when the login has come to its end.
    void login(const QString &user = "alice", const QString &password = "wonderland-7") const;

    /// Whether a label comes to show this within a minute.
    bool shows(const char *name, const QString &text) const;

    /// Whether the main page is shown, not that of the login.
    bool isLoggedIn() const;

    bool isOn(const char *name) const { return find(name)->isEnabled(); }

    /// Whether the log has this text.
    static bool logHas(const QByteArray &text);

    /// Orders how a page ("/api") is answered from now on: parameters as in "keep=500&times=1", and a body in place
    /// of the page's own.
    static void order(const QString &page, const QString &parameters, const QByteArray &body = {});

    /// The last request to a page, with its headers; empty when there was none since the last reset().
    static QByteArray lastRequest(const QString &page);

    /// Forgets all requests and orders.
    static void reset();
};

/// What a bash command prints, trimmed; a run ends when it hangs. The window is at a standstill meanwhile.
QByteArray inHome(const QByteArray &command, const QByteArray &input = {});

/// What main() does in a test that runs in the lab.
template <typename Test> int runLabTest(int argc, char *argv[])
{
    if (!canUseLab()) {
        return 0;
    }
    QApplication application(argc, argv);
    prepareApplication(application);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

#define LAB_TEST_MAIN(Test)                                                                                          \
    int main(int argc, char *argv[])                                                                                 \
    {                                                                                                                \
        return runLabTest<Test>(argc, argv);                                                                         \
    }
