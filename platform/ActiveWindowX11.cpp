#include "platform/ActiveWindow.h"

#include <QApplication>
#include <QMainWindow>
#include <QX11Info>

#include <cstdlib>
#include <cstring>
#include <xcb/xcb.h>

static xcb_atom_t activeWindowAtom(xcb_connection_t *connection)
{
    static const char name[] = "_NET_ACTIVE_WINDOW";
    const xcb_intern_atom_cookie_t cookie = xcb_intern_atom(connection, 0, std::strlen(name), name);
    xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(connection, cookie, nullptr);
    const xcb_atom_t atom = reply != nullptr ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    std::free(reply);
    return atom;
}

static void requestActivation(WId window)
{
    xcb_connection_t *connection = QX11Info::connection();
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = static_cast<xcb_window_t>(window);
    event.type = activeWindowAtom(connection);
    event.data.data32[0] = 2; // the request comes from the user's own action, not from the application
    event.data.data32[1] = static_cast<uint32_t>(QX11Info::getTimestamp());
    xcb_send_event(connection, 0, static_cast<xcb_window_t>(QX11Info::appRootWindow()),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
    xcb_flush(connection);
}

void macosActiveWindow()
{
    if (!QX11Info::isPlatformX11()) {
        return;
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget *window : windows) {
        if (window->isVisible() && qobject_cast<const QMainWindow *>(window) != nullptr) {
            requestActivation(window->winId());
        }
    }
}
