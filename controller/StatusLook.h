#pragma once

#include "controller/Status.h"

/// What a status does to a part of the window.
enum class Turn { Keep, Off, On };

/// How the window, the tray icon and its menu look in one status. Texts hold "%1" where the server's name stands; a
/// null text or picture leaves what is there.
struct StatusLook
{
    const char *picture;  ///< lbStatus
    const char *text;     ///< lbStatusT
    bool connectShown;    ///< pbConnect stands there; else pbDisconnect
    Turn connect;         ///< pbConnect
    Turn disconnect;      ///< pbDisconnect
    Turn reconnect;       ///< pbReconnect
    Turn choice;          ///< cmServer and cmProto
    Turn update;          ///< pbUpdate
    Turn trayConnect;     ///< tray submenu "Connect", with its picture
    Turn trayDisconnect;  ///< tray entry "Disconnect", with its picture
    Turn trayReconnect;   ///< tray entry "Reconnect", with its picture
    const char *trayIcon; ///< the tray icon
    const char *toolTip;  ///< of the tray icon
    const char *message;  ///< pops up from the tray icon
    const char *note;     ///< lbStatusNote, what goes on; null without
};

/// The look of a status, or null for a value outside the enumeration.
const StatusLook *statusLook(KORVANSTATUS status);

/// The look of a tunnel that broke, until it is closed: nothing is protected.
const StatusLook &lostLook();
