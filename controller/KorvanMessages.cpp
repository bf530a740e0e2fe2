#include "controller/Korvan.h"

#include "common/AppPath.h"
#include "controller/EngineMessage.h"
#include "names/StateFiles.h"
#include "ui/KvUnaskedBox.h"
#include "ui_Korvan.h"

#include <QDebug>
#include <QFile>

void Korvan::onMessage(QString message)
{
    qDebug().noquote() << message;
    // The boxes below deliver the engine's next messages, which must wait for their turn.
    m_waitingMessages.append(message);
    if (m_actsOnMessage) {
        return;
    }
    m_actsOnMessage = true;
    while (!m_waitingMessages.isEmpty()) {
        actOnMessage(m_waitingMessages.takeFirst());
    }
    m_actsOnMessage = false;
}

void Korvan::actOnMessage(const QString &message)
{
    switch (classifyMessage(message, m_form->cmProto->currentText())) {
    case EngineMessage::TunnelFailed:
        onTunnelFailed();
        break;
    case EngineMessage::L2TPLoginFailed:
        onL2TPLoginFailed();
        break;
    case EngineMessage::Error:
        showTunnelLost();
        KvUnaskedBox::tell(this, QMessageBox::Critical, tr("Error"), tr("Unknown error, please check log."));
        onDisconnect();
        break;
    case EngineMessage::Progress: {
        const QString address = serverAddressOf(message);
        if (!address.isNull()) {
            m_form->lbServerIP->setText(address);
        }
        if (const auto past = pastTunnelOf(message)) {
            m_pastTunnel = *past;
            showPastTunnel();
        }
        break;
    }
    }
}

void Korvan::onTunnelFailed()
{
    if (m_form->cbAutoReconn->isChecked()) {
        onReconnect();
        return;
    }
    showTunnelLost();
    m_route.cutOff(this);
    onDisconnect();
}

void Korvan::onL2TPLoginFailed()
{
    onDisconnect();
    KvUnaskedBox::tell(this, QMessageBox::Critical, tr("Error"), tr("Username or password is not valid."));
    QFile::remove(appPath(kL2tpPasswordFile)); // asked for again at the next attempt
}
