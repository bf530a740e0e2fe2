#include "controller/Korvan.h"

#include <QApplication>
#include <QMenu>

void Korvan::buildTrayMenu()
{
    const auto icon = [](const char *name) { return QIcon(QStringLiteral(":/img/%1.png").arg(QLatin1String(name))); };

    m_trayMenu->clear();
    QAction *open = m_trayMenu->addAction(tr("Open Korvan"), this, &Korvan::showOnTop);
    QFont bold = open->font();
    bold.setBold(true);
    open->setFont(bold);
    m_trayMenu->addSeparator();
    m_connectMenu = m_trayMenu->addMenu(icon("connect"), tr("Connect"));
    m_connectMenu->menuAction()->setEnabled(false); // the menu itself would stay disabled for ever
    m_reconnectAction = m_trayMenu->addAction(icon("reconnect"), tr("Reconnect"), this, &Korvan::onReconnect);
    m_reconnectAction->setEnabled(false);
    m_disconnectAction = m_trayMenu->addAction(icon("disconnect"), tr("Disconnect"), this, &Korvan::onDisconnect);
    m_disconnectAction->setEnabled(false);
    m_trayMenu->addSeparator();
    m_trayMenu->addAction(icon("changeuser"), tr("Change User..."), this, &Korvan::onChangeUser);
    m_trayMenu->addAction(icon("settings"), tr("Update Config..."), this, &Korvan::onMenuCommand);
    m_trayMenu->addAction(icon("proxy"), tr("Proxy Settings..."), this, &Korvan::onMenuCommand);
    m_trayMenu->addSeparator();
    m_trayMenu->addAction(icon("close"), tr("Exit"), qApp, &QApplication::quit);
    m_tray->setContextMenu(m_trayMenu);
}
