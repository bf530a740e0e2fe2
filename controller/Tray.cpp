#include "controller/Tray.h"

#include "controller/Korvan.h"
#include "controller/StatusLook.h"
#include "ui/PlainText.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QMenu>

static constexpr int kMessageMs = 10000;

/// More servers than these are grouped in the menu, so many to a group.
static constexpr int kMenuEntries = 1000;

static constexpr char kUpdateConfig[] = QT_TRANSLATE_NOOP("Korvan", "Update Config...");
static constexpr char kProxySettings[] = QT_TRANSLATE_NOOP("Korvan", "Proxy Settings...");

/// The property of an entry that names its picture.
static constexpr char kPicture[] = "picture";

static void setPicture(QAction *entry, const QByteArray &name)
{
    entry->setProperty(kPicture, name);
    entry->setIcon(QIcon(themedPicture(QStringLiteral(":/img/%1.png").arg(QLatin1String(name)))));
}

/// Also changes the entry's picture to the one for that.
static void turn(QAction *entry, Turn to, const char *picture, const char *greyed)
{
    if (entry != nullptr && to != Turn::Keep) {
        entry->setEnabled(to == Turn::On);
        setPicture(entry, to == Turn::On ? picture : greyed);
    }
}

Tray::Tray(Korvan *window) : m_window(window), m_icon(new QSystemTrayIcon(window)), m_menu(new QMenu(window)) {}

bool Tray::isAvailable()
{
    return QSystemTrayIcon::isSystemTrayAvailable();
}

void Tray::build()
{
    m_menu->clear();
    QAction *open = m_menu->addAction(Korvan::tr("Open Korvan"), m_window, &Korvan::showOnTop);
    QFont bold = open->font();
    bold.setBold(true);
    open->setFont(bold);
    m_menu->addSeparator();
    const auto add = [this](const char *picture, const QString &text, auto *receiver, auto slot) {
        QAction *entry = m_menu->addAction(text, receiver, slot);
        setPicture(entry, picture);
        return entry;
    };
    m_connectMenu = m_menu->addMenu(Korvan::tr("Connect"));
    setPicture(m_connectMenu->menuAction(), "connect");
    m_connectMenu->menuAction()->setEnabled(false); // the menu itself would stay disabled for ever
    m_reconnect = add("reconnect", Korvan::tr("Reconnect"), m_window, &Korvan::onReconnect);
    m_reconnect->setEnabled(false);
    m_disconnect = add("disconnect", Korvan::tr("Disconnect"), m_window, &Korvan::onDisconnect);
    m_disconnect->setEnabled(false);
    m_menu->addSeparator();
    add("changeuser", Korvan::tr("Change User..."), m_window, [window = m_window] {
        window->showOnTop();
        window->onChangeUser();
    });
    add("settings", Korvan::tr(kUpdateConfig), m_window, &Korvan::onMenuCommand);
    add("proxy", Korvan::tr(kProxySettings), m_window, &Korvan::onMenuCommand);
    m_menu->addSeparator();
    add("close", Korvan::tr("Exit"), qApp, &QApplication::quit);
    m_icon->setContextMenu(m_menu);
    m_icon->show();
}

void Tray::setServers(const QStringList &names)
{
    if (m_connectMenu == nullptr) {
        return;
    }
    m_connectMenu->clear();
    for (QMenu *group : m_connectMenu->findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly)) {
        group->deleteLater();
    }
    const auto addServers = [window = m_window](QMenu *menu, const QStringList &servers) {
        for (const QString &server : servers) {
            menu->addAction(server, window, &Korvan::onMenuConnect);
        }
    };
    if (names.size() <= kMenuEntries) {
        addServers(m_connectMenu, names);
        return;
    }
    // Qt searches a whole menu for every entry that it gains, and nobody finds a server among thousands.
    for (int index = 0; index < names.size(); index += kMenuEntries) {
        const QStringList servers = names.mid(index, kMenuEntries);
        QMenu *group = m_connectMenu->addMenu(servers.first() + QStringLiteral(" \u2013 ") + servers.last());
        QObject::connect(group, &QMenu::aboutToShow, m_window, [=] {
            if (group->isEmpty()) {
                addServers(group, servers);
            }
        });
    }
}

void Tray::repaint()
{
    for (QAction *entry : m_menu->actions()) {
        const QByteArray picture = entry->property(kPicture).toByteArray();
        if (!picture.isEmpty()) {
            setPicture(entry, picture);
        }
    }
}

void Tray::show(const StatusLook &look, const QString &server)
{
    turn(m_connectMenu != nullptr ? m_connectMenu->menuAction() : nullptr, look.trayConnect, "connect", "connectc");
    turn(m_disconnect, look.trayDisconnect, "disconnect", "disconnectc");
    turn(m_reconnect, look.trayReconnect, "reconnect", "reconnectc");
    const auto filled = [&server](const char *text) {
        const QString translated = Korvan::tr(text);
        return translated.contains(QLatin1String("%1")) ? translated.arg(server) : translated;
    };
    if (look.trayIcon != nullptr) {
        m_icon->setIcon(QIcon(QLatin1String(look.trayIcon)));
    }
    if (look.toolTip != nullptr) {
        m_icon->setToolTip(plainText(filled(look.toolTip)));
    }
    if (look.message != nullptr) {
        tell(filled(look.message));
    }
}

void Tray::tell(const QString &text)
{
    m_icon->showMessage(QStringLiteral("Korvan"), text, QSystemTrayIcon::Information, kMessageMs);
}

int Tray::tabOf(const QObject *entry)
{
    const auto *action = qobject_cast<const QAction *>(entry);
    const QString text = action != nullptr ? action->text() : QString();
    return text == Korvan::tr(kUpdateConfig)    ? Korvan::kSettingsTab
           : text == Korvan::tr(kProxySettings) ? Korvan::kProxyTab
                                                : -1;
}

void Tray::click(QSystemTrayIcon::ActivationReason reason)
{
    if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::MiddleClick) {
        QTimer::singleShot(0, m_window, &Korvan::showOnTop);
    }
}

void Tray::hideWindow()
{
    isAvailable() ? m_window->hide() : m_window->showMinimized();
}
