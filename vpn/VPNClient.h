#pragma once

#include "platform/HelperProcess.h"

#include <QThread>

#include <atomic>
#include <memory>
#include <optional>

class VPNAgent;

/// One VPN connection at a time. open() runs the helper program of the connection's type on a worker thread (this
/// thread object's run()), which answers the helper's prompts, reports what it prints through message() and turns
/// what it recognises into states. close() takes the connection down again.
///
/// All operations are for the thread that owns the object; open(), close(), setup() and unsetup() block their caller
/// in a local event loop, so that its events go on being delivered. The signals come from the worker thread.
class VPNClient : public QThread
{
    Q_OBJECT

public:
    /// Indexes of the tables of VPNTables.h; the value -1 stands for "none".
    enum TYPE : int { OPENVPN, PPTP, L2TP, SSTP, IKEV2 };

    enum STATE : int { DISCONNECTED, DISCONNECTING, CONNECTING, CONNECTED, VPNERROR };

    /// The parameters of one connection.
    struct OPTION
    {
        TYPE type = static_cast<TYPE>(-1);
        QString user;     ///< account name
        QString password; ///< account password
        QString config;   ///< OpenVPN: the profile, as a path below the application folder that begins with "/"
        QString params;   ///< OpenVPN: further arguments, separated by "|"; SSTP: the MTU
        int aux = -1;     ///< carried, not read
        QString auxText;  ///< carried, not read
        QString server;   ///< SSTP: the server's host name
        QString note;     ///< carried, not read
    };

    /// What setup() and unsetup() work on.
    struct SETUP
    {
        SETUP(TYPE setupType, QString first, QString second, QString third)
            : type(setupType), a(std::move(first)), b(std::move(second)), c(std::move(third))
        {}

        TYPE type;
        QString a; ///< carried, not read
        QString b; ///< the server's address
        QString c; ///< the pre-shared key; for L2TP always replaced by the built-in one
    };

    VPNClient();
    /// Closes an open connection, which takes close()'s three seconds. The worker, its helper and the agent are gone
    /// afterwards.
    ~VPNClient() override;

    STATE state() const;
    /// The type of the connection that was opened last; -1 before the first open() and after a successful close().
    TYPE type() const;
    /// Stores the state and announces it: stateChanged(), then the signal of the state's own. Entering CONNECTED
    /// starts the byte-count agent. The current state again does nothing. Callable from any thread.
    void setState(STATE s);
    /// setState() for the worker: never out of DISCONNECTING, so that no marker that arrives just then undoes a
    /// cancel.
    void setStateUnlessClosing(STATE s);
    /// Getter and setter in one, callable from any thread: with both arguments 0 they are filled with the stored byte
    /// counts, otherwise they are stored.
    void byteCount(quint64 &received, quint64 &sent);
    /// Sets the stored byte counts back to 0, callable from any thread.
    void clearByteCount();

    /// Brings a connection up, closing an active one first, and waits for at most two minutes. True when it is up.
    /// Every failure has been reported through message() by then; a connection that was closed from an event during
    /// the wait is no failure, and false too.
    bool open(OPTION option);
    /// Takes the connection down. Gives the worker exactly three seconds for it, then ends it. False, with nothing
    /// done, when no worker is running or another close() is under way.
    bool close();
    /// Prepares the system for a connection: for PPTP, L2TP and IKEv2 the setup helper creates or updates the network
    /// service. False on failure, which message() reported.
    bool setup(SETUP s);
    /// Removes what setup() created; for OPENVPN makes sure that helpers get root's rights, from this process or from
    /// its root part. False on failure.
    bool unsetup(SETUP s);
    /// unsetup() for OpenVPN.
    bool reset();

signals:
    /// One chunk of a helper's output, or a note of the engine. Errors begin with "[ERROR]".
    void message(QString text);
    void stateChanged(int state);
    void connecting();
    void connected();
    void disconnected();
    void disconnecting();
    void vpnerror();

protected:
    void run() override;

    std::unique_ptr<HelperProcess> m_process; ///< the helper; belongs to the worker thread while that runs
    OPTION m_option;
    std::atomic<STATE> m_state{DISCONNECTED};
    int m_timeout = 120000; ///< how long open(), setup() and unsetup() wait, in milliseconds
    std::atomic<quint64> m_bytesSent{0};
    std::atomic<quint64> m_bytesReceived{0};
    std::unique_ptr<VPNAgent> m_agent;

private:
    void announce(STATE s);
    bool prepareAttempt(const OPTION &option);
    bool workerRuns();
    void endWorker();
    void dropHelper();
    std::optional<QString> runSetupHelper(TYPE type, const QStringList &arguments, const QString &note);

    int m_attempt = 0; ///< counts open() and close(), so that a waiting open() notices that it was overtaken
    bool m_closing = false;
};
