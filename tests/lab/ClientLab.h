#pragma once

#include "tests/support/TestFiles.h"
#include "tests/window/ClientWindow.h"

#include <QComboBox>
#include <QLineEdit>
#include <QProcess>

#include <csignal>

/// What a bash command prints on the subscriber's machine, trimmed; the test ends when it hangs.
QByteArray inHome(const QString &command, const QByteArray &input = {});

/// The window on the subscriber's machine of the lab: the real helpers, tools, servers and web pages.
class ClientLab : public ClientWindow
{
public:
    /// Makes the service forget all orders and requests, and puts the bundle into the application folder.
    ClientLab();

    /// The test fails unless all expected boxes came and the network comes to be as it was at the beginning.
    ~ClientLab();

    /// Fills in the login page and presses pbLogin; returns when the login has come to its end.
    void login(const QString &user = "alice", const QString &password = "wonderland-7") const;

    /// Logs alice in, in a window that plays no sounds, and selects the server. Starts a window unless told not to.
    void logInTo(const QString &server) const;
    void startLoggedIn(const QString &server)
    {
        start();
        logInTo(server);
    }

    /// Ticks or unticks a box of the settings page as the user does.
    void tick(const char *box, bool on = true) const;

    /// Whether a label comes to show this within a minute.
    bool shows(const char *name, const QString &text) const
    {
        return QTest::qWaitFor([&] { return label(name) == text; }, 60000);
    }

    /// Whether the main page is shown, not that of the login.
    bool isLoggedIn() const { return find("pageMain")->isVisibleTo(m_window.get()); }

    bool isOn(const char *name) const { return find(name)->isEnabled(); }

    /// Whether the status text comes to be this one, and the window is done with it.
    bool isConnected() const { return shows("lbStatusT", " CONNECTED"); }
    bool isDisconnected() const
    {
        return QTest::qWaitFor([this] { return isOn("cmServer"); }, 60000) && label("lbStatusT") == "NOT CONNECTED";
    }

    /// The same after the button for it was pressed.
    bool connects() const { return press("pbConnect") && isConnected(); }
    bool disconnects() const { return press("pbDisconnect") && isDisconnected(); }

    /// The box of the kill switch must come next; it is answered with OK.
    void expectKillSwitch()
    {
        boxes.expect("Error", "Internet connection has been terminated for your security.\nPlease press OK to resume "
                              "your regular internet connection and reconnect to the VPN if needed.");
    }

    /// Ends OpenVPN and answers the kill switch: a way to disconnect without the engine's three seconds.
    bool breakTunnel();

    /// Whether the network comes back to how it was at the beginning within a minute; tells the difference otherwise.
    bool networkIsAsBefore() const;

    /// Orders how a page ("/api") is answered from now on: parameters as in "keep=500&times=1", and a body in place
    /// of the page's own.
    static void order(const QString &page, const QString &parameters, const QByteArray &body = {})
    {
        inHome("curl -sSf -T - \"$LAB_CONTROL/answer" + page + '?' + parameters + '"', body);
    }

    /// The last request to a page, with its headers; empty when there was none since the last reset().
    static QByteArray lastRequest(const QString &page) { return inHome("curl -sf \"$LAB_CONTROL/seen" + page + '"'); }

    /// Forgets all requests and orders.
    static void reset() { inHome("curl -sSf -d '' \"$LAB_CONTROL/reset\""); }

private:
    QByteArray m_network;
};

/// Where the IP test page sees the subscriber's other programs, "ADDRESS, COUNTRY"; empty when they can not reach it.
QByteArray whereabouts(const QString &curlOptions = {});

/// Whether the IP test page answers over IPv6.
inline bool ipv6IsOpen()
{
    return !inHome("curl -s -m 1 http://[2001:db8:113::10]/testip.php").isEmpty();
}

/// Whether there is a default route in the main table.
inline bool hasDefaultRoute()
{
    return !inHome("ip route show default").isEmpty();
}

/// The process that is OpenVPN on the subscriber's machine, or 0.
pid_t openVPN();

/// Packets that reach the world from the subscriber's machine outside any tunnel, IPv4 and IPv6, while other programs
/// of his keep sending for as long as it lives.
struct LeakWatch
{
    LeakWatch()
    {
        inHome("$LAB ctl watch");
        senders.start("bash", {"-c", "exec $LAB ctl flood"});
        senders.waitForStarted();
    }

    /// How many have come so far.
    static int packets() { return inHome("$LAB ctl leaked").toInt(); }

    QProcess senders;
};
