#pragma once

#include <QThread>

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
    bool isWanted() const;
    bool connectToManagement(QTcpSocket &socket) const;
    bool waitForData(QTcpSocket &socket) const;
    void readReports(QTcpSocket &socket);

    VPNClient *m_client = nullptr;
};
