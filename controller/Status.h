#pragma once

#include <QMetaType>

/// The controller's connection status. Every visible change of the connection goes through Korvan::setStatus().
enum KORVANSTATUS : int {
    STATUS_INIT = 0,          ///< started, nobody is logged in
    STATUS_READY = 1,         ///< logged in
    STATUS_CONNECTING = 2,    ///< a tunnel is being brought up
    STATUS_CONNECTED = 3,     ///< a tunnel is up
    STATUS_DISCONNECTING = 4, ///< the engine is being closed
    STATUS_DISCONNECTED = 5,  ///< the engine is closed
    STATUS_BUSY = 6,          ///< the connection controls are frozen
    STATUS_RECONNECTING = 7,  ///< waiting for the next attempt, which alone leads out of it
};
Q_DECLARE_METATYPE(KORVANSTATUS)

/// The status before the first setStatus(): outside the enumeration, so that the first one always acts.
constexpr auto kStatusNone = static_cast<KORVANSTATUS>(8);

/// Whether a tunnel is being brought up or is up: the two values that differ in the lowest bit only.
inline bool tunnelInUse(KORVANSTATUS status)
{
    return (status & ~1) == STATUS_CONNECTING;
}
