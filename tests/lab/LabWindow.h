#pragma once

#include "tests/support/TestFiles.h"
#include "tests/window/ClientWindow.h"

#include <QLineEdit>

/// What a bash command prints, trimmed; a run ends when it hangs. The window is at a standstill meanwhile.
QByteArray inHome(const QByteArray &command, const QByteArray &input = {});

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
    void login(const QString &user = "alice", const QString &password = "wonderland-7") const
    {
        find<QLineEdit>("edUser")->setText(user);
        find<QLineEdit>("edPass")->setText(password);
        QVERIFY(press("pbLogin"));
    }

    /// Whether a label comes to show this within a minute.
    bool shows(const char *name, const QString &text) const
    {
        return QTest::qWaitFor([&] { return label(name) == text; }, 60000);
    }

    /// Whether the main page is shown, not that of the login.
    bool isLoggedIn() const { return find("pageMain")->isVisibleTo(m_window.get()); }

    bool isOn(const char *name) const { return find(name)->isEnabled(); }

    /// Orders how a page ("/api") is answered from now on: parameters as in "keep=500&times=1", and a body in place
    /// of the page's own.
    static void order(const QByteArray &page, const QByteArray &parameters, const QByteArray &body = {})
    {
        inHome("curl -sSf -T - \"$LAB_CONTROL/answer" + page + '?' + parameters + '"', body);
    }

    /// The last request to a page, with its headers; empty when there was none since the last reset().
    static QByteArray lastRequest(const QByteArray &page)
    {
        return inHome("curl -sf \"$LAB_CONTROL/seen" + page + '"');
    }

    /// Forgets all requests and orders.
    static void reset() { inHome("curl -sSf -d '' \"$LAB_CONTROL/reset\""); }
};
