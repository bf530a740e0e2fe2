#include "controller/Korvan.h"

#include "account/L2tpPassword.h"
#include "account/Proxy.h"
#include "account/ServerLists.h"
#include "base/Addresses.h"
#include "common/AppPath.h"
#include "controller/Box.h"
#include "names/StateFiles.h"
#include "ui/KvUnaskedBox.h"
#include "ui_Korvan.h"
#include "vpn/HelperStart.h"

#include <QAction>
#include <QDesktopServices>
#include <QFile>
#include <QScopedValueRollback>
#include <QUrl>

static constexpr int kRetryMs = 50;

void Korvan::onConnect()
{
    const bool isClosing = m_engine->state() == VPNClient::DISCONNECTING;
    if (m_connectInWork || m_actsOnMessage || isClosing) {
        // The attempt that failed has not returned yet, a tunnel is still being closed, or its box is open.
        if (m_status == STATUS_RECONNECTING || isClosing) {
            QTimer::singleShot(kRetryMs, this, &Korvan::onConnect);
        }
        return;
    }
    // Every wait from here on delivers the user's next clicks.
    const QScopedValueRollback<bool> guard(m_connectInWork, true);
    m_route.remember();
    if (m_form->cmServer->currentIndex() < 0 || m_engine->isRunning() || m_bundleInWork) {
        giveUpReconnect();
        return;
    }
    if (!m_form->cmServer->isEnabled() && m_status != STATUS_RECONNECTING) { // it says what went on, and no server
        onChangeUser();
        return;
    }
    VPNClient::SETUP setup(static_cast<VPNClient::TYPE>(-1), {}, {}, {});
    VPNClient::OPTION option;
    if (!prepareConnection(setup, option)) {
        giveUpReconnect();
        return;
    }
    setStatus(STATUS_CONNECTING);
    const bool up = m_engine->setup(setup) && m_status == STATUS_CONNECTING && m_engine->open(option);
    QFile::remove(appPath(kProxyLoginFile)); // OpenVPN has read it by now
    if (up) {                                // or the program quits, which ends the wait, too
        showConnected();
    }
}

/// Shows the tunnel that is up. The attempt itself hears of it late when a box that was opened meanwhile holds it up.
void Korvan::showConnected()
{
    if (m_status == STATUS_CONNECTING && m_engine->state() == VPNClient::CONNECTED) {
        setStatus(STATUS_CONNECTED);
    }
}

/// Leads back to "not connected" where a reconnect was to follow: only an attempt leads out of STATUS_RECONNECTING.
void Korvan::giveUpReconnect()
{
    if (m_status == STATUS_RECONNECTING) {
        setStatus(STATUS_CONNECTING);
        onDisconnect();
    }
}

/// False when the user chose not to connect after all.
bool Korvan::prepareConnection(VPNClient::SETUP &setup, VPNClient::OPTION &option)
{
    const QString protocol = m_form->cmProto->currentText();
    if (protocol == QLatin1String("OpenVPN")) {
        return prepareOpenVPN(setup, option);
    }
    if (protocol == QLatin1String("L2TP")) {
        return prepareL2TP(setup, option);
    }
    return true; // the engine refuses the type
}

bool Korvan::prepareOpenVPN(VPNClient::SETUP &setup, VPNClient::OPTION &option)
{
    setup.type = VPNClient::OPENVPN;
    setup.a = QStringLiteral("update");
    option.type = VPNClient::OPENVPN;
    if (isCrtExpired()) {
        KvUnaskedBox box(QMessageBox::Information, tr("Notify"),
                         tr("Certificate might be expired.\nDo you want to renew subscription?"), this);
        if (onlyYes(box)) {
            QDesktopServices::openUrl(QUrl(QStringLiteral(KORVAN_PORTAL_URL)));
        }
        return false;
    }
    const QString server = m_form->cmServer->currentText();
    const bool proxied = server.contains(QLatin1String("Proxied-"));
    m_form->lbPublicIP->setText(proxied ? tr("Public IP Address*") : tr("Public IP Address"));
    m_form->lbPublicIP->setToolTip(
        proxied ? tr("Proxied configurations require you to configure your program to use the VPN.\n"
                     "Check installation instructions for further details.")
                : QString());
    const QString folder = appPath(kProfileFolder);
    updateOpenVPN(folder, openVPNServerFile(server));
    option.config = QLatin1String(kProfileCopy);
    const ProxySettings proxy = shownProxy();
    option.params = openVPNProxy(proxy, proxy.http ? proxyAuthPath() : QString()) + QLatin1String("|--cd|") + folder;
    return true;
}

bool Korvan::prepareL2TP(VPNClient::SETUP &setup, VPNClient::OPTION &option)
{
    setup.type = VPNClient::L2TP;
    setup.b = m_form->cmServer->currentData().toString();
    option.type = VPNClient::L2TP;
    option.user = m_form->edUser->text();
    if (QFile::exists(appPath(kL2tpPasswordFile))) {
        option.password = loadL2TPPassword();
        return true;
    }
    option.password = getL2TPPassword();
    return !option.password.isEmpty();
}

void Korvan::onDisconnect()
{
    setStatus(STATUS_DISCONNECTING);
    if (!m_engine->close() && m_status != STATUS_RECONNECTING) {
        startDownScript(); // what a tunnel that broke left standing has waited for this
    }
    setStatus(STATUS_DISCONNECTED);
}

void Korvan::onReconnect()
{
    setStatus(STATUS_RECONNECTING);
    onDisconnect();
    QTimer::singleShot(0, this, &Korvan::onConnect);
}

void Korvan::onMenuConnect()
{
    const auto *action = qobject_cast<QAction *>(sender());
    if (action == nullptr) {
        return;
    }
    const int server = m_form->cmServer->findText(action->text(), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (server >= 0) {
        m_form->cmServer->setCurrentIndex(server);
        onConnect();
    }
}

void Korvan::onAutoReconn()
{
    if (!m_form->cbAutoReconn->isChecked()) {
        return;
    }
    QMessageBox box(QMessageBox::Warning, tr("Warning"),
                    tr("Please note that if auto reconnect is enabled, there will be a brief moment \n"
                       "in which your programs may not be protected by the VPN during reconnection. \n"
                       "Do you still wish to enable auto-reconnect?"),
                    QMessageBox::NoButton, this);
    m_form->cbAutoReconn->setChecked(onlyYes(box));
}
