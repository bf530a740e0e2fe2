#include "controller/WindowRoute.h"

#include "controller/Korvan.h"
#include "route/DefaultGateway.h"
#include "ui/KvUnaskedBox.h"
#include "ui_Korvan.h"

#include <QDebug>

static const QString kAny = QStringLiteral("0.0.0.0");

bool WindowRoute::isLockDownWanted() const
{
    // These servers are reached through a proxy that itself needs the ordinary route.
    return m_form->cbLockDown->isChecked() && !m_form->cmServer->currentText().startsWith(QLatin1String("Proxied-"));
}

void WindowRoute::repair()
{
    m_gateway = GetDefaultGateway();
    qDebug().noquote() << "Default Gateway:" << m_gateway;
    const QString saved = LoadDefaultGateway();
    qDebug().noquote() << "Saved Gateway:" << saved;
    if (saved.isEmpty() || saved == m_gateway) {
        return;
    }
    m_gateway = saved;
    restore();
    qDebug().noquote() << "Restore Default Gateway to" << m_gateway;
}

void WindowRoute::remember()
{
    gateway(); // of the network before
    m_question = askDefaultGateway();
}

QString WindowRoute::gateway()
{
    if (m_question.valid()) {
        const QString current = m_question.get();
        if (!current.isEmpty()) {
            m_gateway = current;
        }
    }
    return m_gateway;
}

void WindowRoute::enterTunnel()
{
    if (isLockDownWanted()) {
        lockDown();
    }
}

void WindowRoute::leaveTunnel()
{
    if (m_lockedDown || isLockDownWanted()) {
        restore();
    }
}

void WindowRoute::optionsSaved(bool isTunnelUp)
{
    if (!m_form->cbLockDown->isChecked()) {
        restore();
    } else if (isTunnelUp && !m_lockedDown && isLockDownWanted()) {
        lockDown();
    }
}

void WindowRoute::release()
{
    if (m_lockedDown) {
        restore();
    }
}

void WindowRoute::cutOff(QWidget *window)
{
    DeleteGateway(kAny, kAny, gateway());
    KvUnaskedBox::tell(
        window, QMessageBox::Critical, Korvan::tr("Error"),
        Korvan::tr("Internet connection has been terminated for your security.\n"
                   "Please press OK to resume your regular internet connection and reconnect to the VPN if needed."));
    restore();
}

void WindowRoute::lockDown()
{
    m_lockedDown = true;
    SaveDefaultGateway(gateway());
    DeleteGateway(kAny, kAny, gateway());
}

void WindowRoute::restore()
{
    m_lockedDown = false;
    AddGateway(kAny, kAny, gateway());
}
