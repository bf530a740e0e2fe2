#include "vpn/OpenVPNWorker.h"

#include "vpn/HelperArguments.h"
#include "vpn/HelperStart.h"
#include "vpn/ManagementPort.h"

static bool hasLineEnd(const QString &text)
{
    return text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r'));
}

void OpenVPNWorker::run()
{
    if (hasLineEnd(m_option.user) || hasLineEnd(m_option.password)) {
        fail(VPNClient::tr("username or password is not matched.")); // the rest would answer the next prompt
        return;
    }
    QString port;
    if (UpdateValidManagementPort()) {
        port = managementPort();
        report(QStringLiteral("Use port ") + port + QStringLiteral(" as management port"));
    }
    if (!start(m_helper, openVPNArguments(m_option, port))) {
        fail(VPNClient::tr("start openvpn process failed."));
        return;
    }
    while (m_helper.state() == QProcess::Running && !isInterrupted()) {
        if (m_helper.waitForReadyRead(kPollMs)) {
            actOn(readOutput());
        }
        if (state() == VPNClient::DISCONNECTING) {
            killOpenVPN();
        }
    }
    // The script would let everybody's packets out; after a tunnel that broke the user decides on that.
    const bool broke = m_helper.state() == QProcess::NotRunning && state() == VPNClient::CONNECTED;
    if (!m_downScriptStarted && !broke &&
        (m_helper.state() != QProcess::NotRunning || m_helper.exitStatus() == QProcess::CrashExit)) {
        startDownScript();
    }
    readOutput();
    if (state() == VPNClient::CONNECTED) {
        fail(VPNClient::tr("openvpn error, please check log"));
    } else if (state() == VPNClient::CONNECTING) {
        fail(VPNClient::tr("vpn connect error, please check log"));
    }
}

OpenVPNOutput OpenVPNWorker::readOutput()
{
    const OpenVPNReader::Chunk chunk = m_reader.read(m_helper.readAll());
    report(chunk.message);
    return chunk.output;
}

void OpenVPNWorker::actOn(OpenVPNOutput output)
{
    switch (output) {
    case OpenVPNOutput::WantsUser:
        m_helper.write(m_option.user.toLocal8Bit() + "\r\n");
        break;
    case OpenVPNOutput::WantsPassword:
        m_helper.write(m_option.password.toLocal8Bit() + "\r\n");
        break;
    case OpenVPNOutput::AuthFailed:
        fail(VPNClient::tr("username or password is not matched.")); // OpenVPN ends by itself
        break;
    case OpenVPNOutput::TunnelFailed:
        fail(VPNClient::tr("can not create vpn tunnel."));
        killOpenVPN();
        break;
    case OpenVPNOutput::TunnelUp:
        moveTo(VPNClient::CONNECTED);
        break;
    case OpenVPNOutput::Other:
        break;
    }
}

/// The script goes first and waits for OpenVPN's end: should the program itself be killed in between, it cleans up
/// all the same.
void OpenVPNWorker::killOpenVPN()
{
    m_downScriptStarted = startDownScript();
    killHelper();
}
