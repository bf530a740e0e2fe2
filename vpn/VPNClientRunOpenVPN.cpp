#include "vpn/VPNClient.h"

#include "common/AppPath.h"
#include "platform/Tool.h"
#include "vpn/HelperArguments.h"
#include "vpn/HelperOutput.h"
#include "vpn/ManagementPort.h"
#include "vpn/WorkerLimits.h"

static bool hasLineEnd(const QString &text)
{
    return text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r'));
}

void VPNClient::runOpenVPN()
{
    if (hasLineEnd(m_option.user) || hasLineEnd(m_option.password)) {
        fail(tr("username or password is not matched.")); // the rest would answer the next prompt
        return;
    }
    m_downScriptStarted = false;
    QString port;
    if (UpdateValidManagementPort()) {
        port = managementPort();
        emit message(QStringLiteral("Use port ") + port + QStringLiteral(" as management port"));
    }
    if (!startHelper(*m_process, openVPNArguments(m_option, port))) {
        fail(tr("start openvpn process failed."));
        return;
    }
    while (m_process->state() == QProcess::Running && !isInterruptionRequested()) {
        if (m_process->waitForReadyRead(kPollMs)) {
            actOnOpenVPN(readChunk(*m_process));
        }
        if (state() == DISCONNECTING) {
            killOpenVPN();
        }
    }
    if (!m_downScriptStarted &&
        (m_process->state() != QProcess::NotRunning || m_process->exitStatus() == QProcess::CrashExit)) {
        startDownScript();
    }
    readChunk(*m_process);
    if (state() == CONNECTED) {
        fail(tr("openvpn error, please check log"));
    } else if (state() == CONNECTING) {
        fail(tr("vpn connect error, please check log"));
    }
}

void VPNClient::actOnOpenVPN(const QString &chunk)
{
    switch (classifyOpenVPN(chunk)) {
    case OpenVPNOutput::WantsUser:
        m_process->write(m_option.user.toLocal8Bit() + "\r\n");
        break;
    case OpenVPNOutput::WantsPassword:
        m_process->write(m_option.password.toLocal8Bit() + "\r\n");
        break;
    case OpenVPNOutput::AuthFailed:
        fail(tr("username or password is not matched.")); // OpenVPN ends by itself
        break;
    case OpenVPNOutput::TunnelFailed:
        fail(tr("can not create vpn tunnel."));
        killOpenVPN();
        break;
    case OpenVPNOutput::TunnelUp:
        moveTo(CONNECTED);
        break;
    case OpenVPNOutput::Other:
        break;
    }
}

/// The script goes first and waits for OpenVPN's end: should the program itself be killed in between, it cleans up
/// all the same.
void VPNClient::killOpenVPN()
{
    startDownScript();
    killHelper();
}

/// Undoes what the up script did, for an OpenVPN that was killed and so could not do it itself.
void VPNClient::startDownScript()
{
    QProcess script;
    script.setProcessEnvironment(childEnvironment());
    script.setProgram(QStringLiteral("bash"));
    script.setArguments({appPath("/down.sh")});
    m_downScriptStarted = script.startDetached();
}
