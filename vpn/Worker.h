#pragma once

#include "vpn/VPNClient.h"

/// How long the worker waits for output at a time; it looks for a cancel in between. Milliseconds, as all of these.
constexpr int kPollMs = 50;
/// How long a helper may take to start, and a stop command to finish.
constexpr int kHelperLimitMs = 30000;

/// What the ways to a connection have in common: telling the client what comes of it, and starting, reading and
/// ending the helper program. A worker lives for one connection, in the client's thread.
class Worker
{
public:
    /// `client` and its `helper`, which is made and not started, outlive the worker.
    Worker(VPNClient &client, HelperProcess &helper, const VPNClient::OPTION &option);

protected:
    VPNClient::STATE state() const;
    /// Whether the worker is to end at once, leaving everything as it is.
    bool isInterrupted() const;
    /// Whether the worker is to end: cancelled by close(), or at once.
    bool isStopping() const;
    void report(const QString &text);
    /// Reports why the connection failed. After a cancel nothing is said.
    void fail(const QString &text);
    /// Changes the state, unless it was cancelled meanwhile.
    void moveTo(VPNClient::STATE s);

    /// Starts the helper program of the connection's type; false when it did not start in time.
    bool start(HelperProcess &helper, const QStringList &arguments);
    /// Waits for a helper's end, in short steps so that the client can end the worker. False when it is still
    /// running.
    bool waitForEnd(HelperProcess &helper, int limitMs);
    void killHelper();
    /// All there is to read, up to the first NUL, passed on as a message.
    QString readChunk(QIODevice &device);

    VPNClient &m_client;
    HelperProcess &m_helper;
    const VPNClient::OPTION &m_option;
};
