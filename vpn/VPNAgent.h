#pragma once

#include <QThread>

#include <atomic>

class QTcpSocket;
class VPNClient;

/// While an OpenVPN connection is up, reads its byte counts from OpenVPN's management interface on 127.0.0.1 and
/// stores them into the client. For every other type the thread ends at once.
class VPNAgent : public QThread
{
    Q_OBJECT

public:
    VPNAgent() = default;
    /// Ends the thread first, which takes at most a tenth of a second.
    ~VPNAgent() override;

    /// The client that is watched and filled; it must outlive the agent.
    void setClient(VPNClient *client);

protected:
    void run() override;

private:
    void watchClient();
    bool isWanted() const;
    bool connectToManagement(QTcpSocket &socket) const;
    bool waitForData(QTcpSocket &socket) const;
    void readReports(QTcpSocket &socket);

    VPNClient *m_client = nullptr;
    /// The thread's last store, loaded after every wait for its end: the thread sanitizer does not see into Qt's
    /// wait().
    std::atomic<bool> m_ended{false};
};
