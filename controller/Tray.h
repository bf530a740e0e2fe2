#pragma once

#include <QSystemTrayIcon>

class Korvan;
class QAction;
class QMenu;
struct StatusLook;

/// The icon in the desktop's tray with its tool tip, its messages and its menu, whose entries call the window's
/// slots. Icon and menu are the window's children.
class Tray
{
public:
    explicit Tray(Korvan *window);

    /// Whether the desktop has a tray, so that a hidden window can be brought back.
    static bool isAvailable();

    const QSystemTrayIcon *icon() const { return m_icon; }

    /// Builds the menu anew and shows the icon.
    void build();

    /// Fills the submenu of the servers; does nothing before build().
    void setServers(const QStringList &names);

    /// Paints the entries' pictures for the colours of now.
    void repaint();

    /// Shows a status. The texts are about the server of that name.
    void show(const StatusLook &look, const QString &server);

    /// Pops up a text from the icon.
    void tell(const QString &text);

    /// The tab of the window that an entry of the menu is for, by its text; -1 for anything else.
    static int tabOf(const QObject *entry);

    /// Brings the window up where a click on the icon asks for it.
    void click(QSystemTrayIcon::ActivationReason reason);

    /// Hides the window, or minimises it where there is no tray.
    void hideWindow();

private:
    Korvan *m_window;
    QSystemTrayIcon *m_icon;
    QMenu *m_menu;
    QMenu *m_connectMenu = nullptr;
    QAction *m_reconnect = nullptr;
    QAction *m_disconnect = nullptr;
};
