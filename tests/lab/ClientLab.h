#pragma once

#include "tests/lab/LabWindow.h"

#include <QComboBox>
#include <QLineEdit>
#include <QProcess>

#include <csignal>

/// The window with all that it needs for tunnels in its application folder.
class ClientLab : public LabWindow
{
public:
    ClientLab();

    /// The test fails unless the network comes to be as it was at the beginning.
    ~ClientLab();

    /// Logs alice in, in a window that plays no sounds, and selects the server. Starts a window unless told not to.
    void startLoggedIn(const QString &server)
    {
        start();
        logInTo(server);
    }
    void logInTo(const QString &server)
    {
        tick("cbNoSound");
        login();
        find<QComboBox>("cmServer")->setCurrentText(server);
        QCOMPARE(find<QComboBox>("cmServer")->currentText(), server);
    }

    /// Ticks or unticks a box of the settings page as the user does.
    void tick(const char *box, bool on = true) const
    {
        auto *widget = find<QAbstractButton>(box);
        if (widget->isChecked() != on) {
            widget->click();
        }
    }

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

private:
    QByteArray m_network;
};

/// Where the IP test page sees the subscriber's other programs, "ADDRESS, COUNTRY"; empty when they can not reach it.
QByteArray whereabouts(const QByteArray &curlOptions = {});

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
    LeakWatch();

    /// How many have come so far.
    static int packets()
    {
        return inHome("ip netns exec world nft list counter inet leaks outside | grep -oP 'packets \\K\\d+'").toInt();
    }

    QProcess senders;
};
