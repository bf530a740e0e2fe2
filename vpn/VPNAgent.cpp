#include "vpn/VPNAgent.h"

#include "vpn/HelperOutput.h"
#include "vpn/ManagementPort.h"
#include "vpn/VPNClient.h"

#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QTcpSocket>

/// How long to wait for the connection, and then for data. Milliseconds.
static constexpr int kManagementLimitMs = 30000;
/// How long the agent waits at a time before it looks whether it is still wanted.
static constexpr int kSliceMs = 100;
/// Reports are short lines. More than this without a line end is none, and is dropped.
static constexpr int kLongestLine = 4096;

VPNAgent::~VPNAgent()
{
    requestInterruption();
    wait();
}

void VPNAgent::setClient(VPNClient *client)
{
    m_client = client;
}

void VPNAgent::run()
{
    if (m_client == nullptr || !isWanted() || m_client->type() != VPNClient::OPENVPN) {
        return;
    }
    QTcpSocket socket;
    socket.setProxy(QNetworkProxy::NoProxy); // the application's proxy is for the outside world
    if (!connectToManagement(socket)) {
        return;
    }
    waitForData(socket);
    socket.readAll(); // the greeting
    socket.write("bytecount 1\r\n");
    readReports(socket);
}

bool VPNAgent::isWanted() const
{
    return m_client->state() == VPNClient::CONNECTED && !isInterruptionRequested();
}

bool VPNAgent::connectToManagement(QTcpSocket &socket) const
{
    const quint16 port = managementPort().toUShort();
    QElapsedTimer waited;
    waited.start();
    while (isWanted() && waited.elapsed() < kManagementLimitMs) {
        socket.connectToHost(QStringLiteral("127.0.0.1"), port, QIODevice::ReadWrite);
        if (socket.waitForConnected(kSliceMs)) {
            return true;
        }
        msleep(kSliceMs);
    }
    return false;
}

/// Whether data came before the limit passed, the connection broke or the agent was no longer wanted.
bool VPNAgent::waitForData(QTcpSocket &socket) const
{
    QElapsedTimer waited;
    waited.start();
    while (isWanted() && socket.state() == QAbstractSocket::ConnectedState && waited.elapsed() < kManagementLimitMs) {
        if (socket.waitForReadyRead(kSliceMs)) {
            return true;
        }
    }
    return false;
}

/// Stores the reports as they come, as long as the connection is up. An answer to a command is no report.
void VPNAgent::readReports(QTcpSocket &socket)
{
    QByteArray buffer;
    while (isWanted() && socket.state() == QAbstractSocket::ConnectedState) {
        if (!waitForData(socket)) {
            continue;
        }
        buffer += socket.readAll();
        if (std::optional<ByteCount> count = takeByteCount(buffer)) {
            m_client->byteCount(count->received, count->sent); // stores, unless both are 0
        }
        if (buffer.size() > kLongestLine) {
            buffer.clear();
        }
    }
}
