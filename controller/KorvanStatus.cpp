#include "controller/Korvan.h"

#include "account/ServerLists.h"
#include "account/Updates.h"
#include "base/Settings.h"
#include "common/AppPath.h"
#include "common/Text.h"
#include "controller/StatusLook.h"
#include "route/DefaultGateway.h"
#include "ui/PlainText.h"
#include "ui_Korvan.h"
#include "vpn/VPNClient.h"

#include <QDebug>
#include <QMenu>
#include <QSound>

static constexpr int kTrayMessageMs = 10000;
static constexpr int kProgressIntervalMs = 500;
static constexpr int kTrafficIntervalMs = 2000;

template <typename Target> static void turn(Target *target, Turn to)
{
    if (to != Turn::Keep) {
        target->setEnabled(to == Turn::On);
    }
}

/// Also changes the entry's picture: the greyed variant has a "c" before ".png".
static void turnEntry(QAction *entry, const char *picture, Turn to)
{
    if (entry == nullptr || to == Turn::Keep) {
        return;
    }
    entry->setEnabled(to == Turn::On);
    const QLatin1String greyed(to == Turn::On ? "" : "c");
    entry->setIcon(QIcon(QStringLiteral(":/img/%1%2.png").arg(QLatin1String(picture), greyed)));
}

static bool lockDownWanted(const Ui::Korvan *form)
{
    // These servers are reached through a proxy that itself needs the ordinary route.
    return form->cbLockDown->isChecked() && !form->cmServer->currentText().startsWith(QLatin1String("Proxied-"));
}

void Korvan::setStatus(KORVANSTATUS status)
{
    if (m_status == STATUS_RECONNECTING && status != STATUS_CONNECTING) {
        return; // while a reconnect is pending only the next attempt leads on
    }
    applyLook(status);
    switch (status) {
    case STATUS_INIT:
        enterInit();
        break;
    case STATUS_READY:
    case STATUS_BUSY:
        enterReady();
        enterNotConnected();
        break;
    case STATUS_CONNECTING:
        enterConnecting();
        break;
    case STATUS_CONNECTED:
        enterConnected();
        break;
    case STATUS_DISCONNECTING:
        m_progressTimer.stop();
        break;
    case STATUS_DISCONNECTED:
        playSound("/snd/disconnect.wav");
        enterNotConnected();
        commitSession();
        break;
    case STATUS_RECONNECTING:
        break;
    }
    m_status = status;
}

void Korvan::applyLook(KORVANSTATUS status)
{
    const StatusLook *look = statusLook(status);
    if (look == nullptr) {
        return;
    }
    m_form->lbStatus->setPicture(QLatin1String(look->picture));
    m_form->lbStatusT->setText(tr(look->text));
    m_form->pbConnect->setVisible(look->connectShown);
    m_form->pbDisconnect->setVisible(!look->connectShown);
    turn(m_form->pbConnect, look->connect);
    turn(m_form->pbDisconnect, look->disconnect);
    turn(m_form->pbReconnect, look->reconnect);
    turn(m_form->cmServer, look->choice);
    turn(m_form->cmProto, look->choice);
    turn(m_form->pbUpdate, look->update);
    turnEntry(m_connectMenu != nullptr ? m_connectMenu->menuAction() : nullptr, "connect", look->trayConnect);
    turnEntry(m_disconnectAction, "disconnect", look->trayDisconnect);
    turnEntry(m_reconnectAction, "reconnect", look->trayReconnect);

    const QString server = m_form->cmServer->currentText();
    const auto filled = [&](const char *text) {
        const QString translated = tr(text);
        return translated.contains(QLatin1String("%1")) ? translated.arg(server) : translated;
    };
    if (look->trayIcon != nullptr) {
        m_tray->setIcon(QIcon(QLatin1String(look->trayIcon)));
    }
    if (look->toolTip != nullptr) {
        m_tray->setToolTip(plainText(filled(look->toolTip)));
    }
    if (look->message != nullptr) {
        m_tray->showMessage(QStringLiteral("Korvan"), filled(look->message), QSystemTrayIcon::Information,
                            kTrayMessageMs);
    }
}

void Korvan::enterInit()
{
    m_form->cbRunOnBoot->hide();
    m_form->pbUpApp->setEnabled(false);
    m_form->pgUpdate->setValue(0);
    const QString updateUrl = getSetting(QStringLiteral("UPDATE/URL"));
    if (!updateUrl.isEmpty()) {
        UPDATE_URL = updateUrl;
    }
    buildTrayMenu();
    m_tray->show();
    m_form->pgLinkState->setValue(0);
    m_form->pbSave->setEnabled(false);
    m_form->pbSaveProxy->setEnabled(false);
    m_skipList = readSkipList();
}

void Korvan::enterReady()
{
    const int protocol = m_form->cmProto->findText(m_protocol, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (protocol >= 0) {
        m_form->cmProto->setCurrentIndex(protocol);
    }
    m_form->stack->setCurrentWidget(m_form->pageMain);
    m_form->lbName->setText(m_form->edUser->text());
    m_form->lbName2->setText(m_form->edUser->text());
}

void Korvan::enterConnecting()
{
    m_form->stack->setCurrentWidget(m_form->pageMain); // no tunnel is up behind the login page
    m_form->pgLinkState->setValue(0);
    m_progressTimer.start(kProgressIntervalMs);
    m_transfer.sessionReceived = 0;
    m_transfer.sessionSent = 0;
    m_startTime = QDateTime::currentDateTime();
}

void Korvan::enterConnected()
{
    playSound("/snd/connect.wav");
    m_progressTimer.stop();
    for (int value = m_form->pgLinkState->value(); value < m_form->pgLinkState->maximum();) {
        m_form->pgLinkState->setValue(++value);
    }
    if (m_form->cbHideConnection->isChecked()) {
        hideInTray();
    }
    if (lockDownWanted(m_form)) {
        lockDown();
    }
    m_trafficTimer.start(0);
    QTimer::singleShot(0, this, &Korvan::updateCountryFromIP);
}

void Korvan::enterNotConnected()
{
    for (QLabel *label : std::initializer_list<QLabel *>{m_form->lbSessionRecv, m_form->lbSessionSend,
                                                         m_form->lbPublicIP, m_form->lbServerIP, m_form->lbCountry}) {
        label->clear();
    }
    m_progressTimer.stop();
    m_form->pgLinkState->setValue(0);
    QTimer::singleShot(0, this, &Korvan::updateCountryFromIP);
    if (m_lockedDown || lockDownWanted(m_form)) {
        restoreGateway();
    }
}

void Korvan::commitSession()
{
    quint64 received = 0;
    quint64 sent = 0;
    m_engine->byteCount(received, sent);
    refreshTransfer(received, sent);
    UpdateTotalDataTransfer(0, 0);
    qDebug().noquote() << "Since" << m_startTime.toString(Qt::ISODate) << "received" << FormatDataSize(received)
                       << "and sent" << FormatDataSize(sent);
    m_engine->clearByteCount(); // a second end of the same connection must not count it again
}

void Korvan::lockDown()
{
    m_lockedDown = true;
    SaveDefaultGateway(m_gateway);
    DeleteGateway(QStringLiteral("0.0.0.0"), QStringLiteral("0.0.0.0"), m_gateway);
}

void Korvan::restoreGateway()
{
    m_lockedDown = false;
    AddGateway(QStringLiteral("0.0.0.0"), QStringLiteral("0.0.0.0"), m_gateway);
}

void Korvan::playSound(const char *file)
{
    if (!m_form->cbNoSound->isChecked()) {
        // One that still loads when the application ends would keep it from ending: the window takes it with it.
        delete m_sound;
        m_sound = new QSound(appPath(file), this);
        m_sound->play();
    }
}

/// Shows what two seconds brought as rates of one second.
static void showRates(const Ui::Korvan &form, quint64 received, quint64 sent)
{
    form.lbDownload->setText(FormatDataSize(received >> 1) + QLatin1String("/s"));
    form.lbUpload->setText(FormatDataSize(sent >> 1) + QLatin1String("/s"));
}

void Korvan::onStatus()
{
    static quint64 last_rcv = 0;
    static quint64 last_snd = 0;
    if (m_status != STATUS_CONNECTED) {
        last_rcv = 0;
        last_snd = 0;
        showRates(*m_form, 0, 0);
        return;
    }
    quint64 received = 0;
    quint64 sent = 0;
    m_engine->byteCount(received, sent);
    const quint64 newlyReceived = received - qMin(received, last_rcv); // the counts may have begun anew
    const quint64 newlySent = sent - qMin(sent, last_snd);
    refreshTransfer(newlyReceived, newlySent);
    showRates(*m_form, newlyReceived, newlySent);
    m_trafficTimer.start(kTrafficIntervalMs);
    last_rcv = received;
    last_snd = sent;
}
