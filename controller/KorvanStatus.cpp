#include "controller/Korvan.h"

#include "account/ServerLists.h"
#include "account/Updates.h"
#include "base/Settings.h"
#include "common/AppPath.h"
#include "controller/StatusLook.h"
#include "ui/Direction.h"
#include "ui/News.h"
#include "ui_Korvan.h"

#include <QAudioDeviceInfo>
#include <QCoreApplication>
#include <QLibraryInfo>
#include <QNetworkAccessManager>
#include <QSound>

static constexpr int kProgressIntervalMs = 500;

static void turn(QWidget *widget, Turn to)
{
    if (to != Turn::Keep) {
        widget->setEnabled(to == Turn::On);
    }
}

void Korvan::setStatus(KORVANSTATUS status)
{
    if (m_status == STATUS_RECONNECTING && status != STATUS_CONNECTING) {
        return; // while a reconnect is pending only the next attempt leads on
    }
    showStatus(status);
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
        m_traffic.endSession();
        tellWhyNoServers(); // the attempt has hidden it
        break;
    case STATUS_RECONNECTING:
        clearAddresses();
        break;
    }
    m_status = status;
    showPastTunnel();
}

void Korvan::showStatus(KORVANSTATUS status)
{
    if (const StatusLook *look = statusLook(status)) {
        showLook(*look);
    }
}

void Korvan::showTunnelLost()
{
    showLook(lostLook());
    clearAddresses();
    m_progressTimer.stop();
    m_form->pgLinkState->setValue(0);
}

/// Says on the dashboard and from the tray's icon what goes past the tunnel. Under lock-down nothing does.
void Korvan::showPastTunnel()
{
    if (m_status != STATUS_CONNECTED) {
        return;
    }
    QStringList parts;
    if (m_pastTunnel.isAll && !m_route.isLockedDown()) {
        parts += m_pastTunnel.taken.isEmpty() ? tr("No traffic goes through the tunnel.")
                                              : tr("Only in the tunnel: %1").arg(isolated(m_pastTunnel.taken));
    }
    if (!m_pastTunnel.ordinary.isEmpty() && !m_route.isLockedDown()) {
        parts += tr("Not in the tunnel: %1").arg(isolated(m_pastTunnel.ordinary));
    }
    const QString text = parts.join(QLatin1String("; "));
    if (text == m_form->lbStatusNote->toolTip()) {
        return;
    }
    m_form->cardStatus->setWarning(!text.isEmpty());
    const QMargins margins = m_form->statusLayout->contentsMargins();
    const int width = m_form->cardStatus->minimumWidth() - margins.left() - margins.right();
    m_form->lbStatusNote->setText(m_form->lbStatusNote->fontMetrics().elidedText(text, Qt::ElideRight, width));
    m_form->lbStatusNote->setToolTip(text);
    if (!text.isEmpty()) {
        m_tray.tell(text);
    }
    announce();
}

void Korvan::showLook(const StatusLook &look)
{
    const QWidget *focused = focusWidget();
    const bool focusIsHere =
        focused == m_form->pbConnect || focused == m_form->pbDisconnect || focused == m_form->cardStatus;
    if (look.picture != nullptr) {
        m_form->lbStatus->setPicture(QLatin1String(look.picture));
        m_form->lbStatusT->setText(tr(look.text));
    }
    m_form->cardStatus->setWarning(&look == &lostLook());
    m_form->lbStatusNote->setText(look.note != nullptr ? tr(look.note) : QString());
    m_form->lbStatusNote->setToolTip({});
    announce();
    // The next one is there before the last one goes: Qt would let the focus pass through the buttons that follow.
    QWidget *shown = look.connectShown ? m_form->pbConnect : m_form->pbDisconnect;
    shown->show();
    const Turn change = look.connectShown ? look.connect : look.disconnect;
    if (change == Turn::On) {
        shown->setEnabled(true);
    }
    if (focusIsHere) {
        moveFocus(change == Turn::Off ? m_form->cardStatus : shown);
    }
    m_form->pbConnect->setVisible(look.connectShown);
    m_form->pbDisconnect->setVisible(!look.connectShown);
    m_form->cardStatus->layout()->activate(); // or a click would find the room of two buttons
    turn(m_form->pbConnect, look.connect);
    turn(m_form->pbDisconnect, look.disconnect);
    turn(m_form->pbReconnect, look.reconnect);
    turn(m_form->cmServer, look.choice);
    turn(m_form->cmProto, look.choice);
    if (look.update != Turn::Keep) {
        enableRefresh(look.update == Turn::On ? QString() : tr("The configuration is in use now."));
    }
    m_tray.show(look, m_form->cmServer->currentText());
}

/// From Connect to Disconnect and back. While the one that is shown can not be pressed the card waits in its place,
/// so that no second press falls on another button.
void Korvan::moveFocus(QWidget *shown)
{
    QWidget *next = shown->isEnabled() ? shown : m_form->cardStatus;
    next->setFocus(Qt::OtherFocusReason);
}

/// Tells screen readers what the dashboard says now.
void Korvan::announce()
{
    const QString title = m_form->lbStatusT->text().trimmed();
    const QString status = (title + QLatin1Char(' ') + m_form->lbStatusNote->text()).trimmed();
    if (status == m_form->lbStatusT->accessibleName()) {
        return;
    }
    for (QWidget *widget : {static_cast<QWidget *>(m_form->cardStatus), static_cast<QWidget *>(m_form->lbStatusT)}) {
        widget->setAccessibleName(status);
    }
    for (QWidget *button : {m_form->pbConnect, m_form->pbDisconnect}) {
        button->setAccessibleDescription(status);
    }
    readOut(m_form->lbStatusT);
}

/// What was seen through the tunnel is not told any more.
void Korvan::clearAddresses()
{
    for (QLabel *label : {m_form->lbPublicIP, m_form->lbServerIP, m_form->lbCountry}) {
        label->clear();
        label->setToolTip({});
    }
    delete m_publicIpRequest;
    m_publicIpRequest = nullptr;
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
    m_tray.build();
    m_form->pgLinkState->setValue(0);
    m_form->pbSave->setEnabled(false);
    m_form->pbSaveProxy->setEnabled(false);
    m_skipList = readSkipList();
}

void Korvan::enterReady()
{
    const bool isSignIn = m_form->stack->currentWidget() == m_form->pageLogin;
    const int protocol = m_form->cmProto->findText(m_protocol, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (protocol >= 0) {
        m_form->cmProto->setCurrentIndex(protocol);
    }
    m_form->stack->setCurrentWidget(m_form->pageMain);
    m_form->lbName->setText(m_form->edUser->text());
    m_form->lbName2->setText(m_form->edUser->text());
    if (isSignIn) {
        moveFocus(m_form->pbConnect);
    }
}

void Korvan::enterConnecting()
{
    hideNotice(); // its buttons are for who has no tunnel
    m_pastTunnel = {};
    m_form->stack->setCurrentWidget(m_form->pageMain); // no tunnel is up behind the login page
    m_form->pgLinkState->setValue(0);
    m_progressTimer.start(kProgressIntervalMs);
    m_traffic.beginSession();
    emit testCancel(); // no test goes on through the tunnel
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
    m_route.enterTunnel();
    m_traffic.startTicks();
    QTimer::singleShot(0, this, &Korvan::updateCountryFromIP);
}

void Korvan::enterNotConnected()
{
    m_traffic.clearSession();
    clearAddresses();
    m_progressTimer.stop();
    m_form->pgLinkState->setValue(0);
    QTimer::singleShot(0, this, &Korvan::updateCountryFromIP);
    m_route.leaveTunnel();
}

/// Loads the sound system's plug-ins, also where the program looks for no others any more. To search for its devices
/// takes as long as half a start, so that the first sound does it.
static bool loadSoundSystem()
{
    const QStringList folders = QCoreApplication::libraryPaths();
    QCoreApplication::setLibraryPaths({QLibraryInfo::location(QLibraryInfo::PluginsPath)});
    const bool found = !QAudioDeviceInfo::availableDevices(QAudio::AudioOutput).isEmpty();
    QCoreApplication::setLibraryPaths(folders);
    return found;
}

void Korvan::playSound(const char *file)
{
    if (!m_form->cbNoSound->isChecked()) {
        static const bool loaded = loadSoundSystem();
        Q_UNUSED(loaded)
        // One that still loads when the application ends would keep it from ending: the window takes it with it.
        delete m_sound;
        m_sound = new QSound(appPath(file), this);
        m_sound->play();
    }
}

void Korvan::onProgress()
{
    static int ticks = 0;
    if (ticks++ % 10 < 3) {
        return; // the bar moves in bursts
    }
    // Only STATUS_CONNECTED completes the bar.
    m_form->pgLinkState->setValue(qMin(m_form->pgLinkState->value() + 1, 99));
}
