#pragma once

#include "tests/lab/LabWindow.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>

/// The window with all that it needs for tunnels in its application folder.
class ClientLab : public LabWindow
{
public:
    ClientLab();

    /// Starts a window, logs alice in and selects the server.
    void startLoggedIn(const QString &server);

    /// Opens the page of that tab.
    void openPage(const QString &name) const;

    /// Ticks or unticks a box of the settings page as the user does.
    void tick(const char *box, bool on = true) const;

    /// What a label shows.
    QString label(const char *name) const;

    /// Whether a label comes to show this within a minute.
    bool shows(const char *name, const QString &text) const;

    /// Whether the status text comes to be this one, and the window is done with it.
    bool isConnected() const { return shows("lbStatusT", QStringLiteral(" CONNECTED")); }
    bool isDisconnected() const;

    /// The box of the kill switch must come next; it is answered with OK.
    void expectKillSwitch();

    /// Ends OpenVPN and answers the kill switch: a way to disconnect without the engine's three seconds.
    bool breakTunnel();
};

/// What a bash command prints on the subscriber's machine, without the last line end. The window is at a standstill.
QByteArray inHome(const QByteArray &command);

/// Where the IP test page sees the subscriber's other programs, "ADDRESS, COUNTRY"; empty when they can not reach it.
QByteArray whereabouts(const QByteArray &curlOptions = {});

/// All that a connection may change of the subscriber's machine: routes, rules, packet filter, name servers, links.
QByteArray networkState();

/// Whether the network comes back to the state within a minute; tells the difference otherwise.
bool networkReturnsTo(const QByteArray &state);

/// The process that is OpenVPN on the subscriber's machine, or 0.
pid_t openVPN();

/// Packets that reach the world from the subscriber's machine outside any tunnel, IPv4 and IPv6, while other programs
/// of his keep sending.
class LeakWatch
{
public:
    LeakWatch();
    ~LeakWatch();

    /// How many have come so far.
    static int packets();

    /// Starts counting anew.
    static void reset();

private:
    QProcess m_senders;
};
