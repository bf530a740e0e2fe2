#include "controller/StatusLook.h"

#include <QCoreApplication>

static constexpr char kOpen[] = ":/images/icon_status_connect_disconnected.png";
static constexpr char kShut[] = ":/images/icon_status_connect_connected.png";
static constexpr char kTrayOff[] = ":/img/tray.disconnect.png";
static constexpr char kTrayOn[] = ":/img/korvan.png";
static constexpr char kNot[] = QT_TRANSLATE_NOOP("Korvan", "NOT CONNECTED");
static constexpr char kUp[] = QT_TRANSLATE_NOOP("Korvan", " CONNECTED"); // the blank is part of the text
static constexpr char kTipOff[] = QT_TRANSLATE_NOOP("Korvan", "Korvan: Disconnected");
static constexpr char kTipConnecting[] = QT_TRANSLATE_NOOP("Korvan", "Korvan: Connecting to server %1");
static constexpr char kTipUp[] = QT_TRANSLATE_NOOP("Korvan", "Korvan: Connected to server %1");
static constexpr char kSayConnecting[] = QT_TRANSLATE_NOOP("Korvan", "Connecting to server %1");
static constexpr char kSayUp[] = QT_TRANSLATE_NOOP("Korvan", "Connected to server %1");
static constexpr char kSayOff[] = QT_TRANSLATE_NOOP("Korvan", "Disconnected from server %1");

static constexpr Turn Keep = Turn::Keep;
static constexpr Turn Off = Turn::Off;
static constexpr Turn On = Turn::On;

// clang-format off
static constexpr StatusLook kLooks[] = {
    // picture text connect-shown | connect disconnect reconnect choice update | tray: connect disconnect reconnect
    {kOpen, kNot, true,  On,   On,   Keep, Off,  Keep, Keep, Keep, Keep, kTrayOff, nullptr, nullptr},  // INIT
    {kOpen, kNot, true,  Keep, Off,  Off,  On,   On,   On,   Off,  Off,  kTrayOff, kTipOff, nullptr}, // READY
    {kOpen, kNot, false, Keep, On,   Off,  Off,  Keep, Off,  On,   Off,  nullptr,  kTipConnecting, kSayConnecting}, // CONNECTING
    {kShut, kUp,  false, Keep, On,   On,   Off,  Off,  Off,  On,   On,   kTrayOn,  kTipUp, kSayUp},  // CONNECTED
    {kShut, kUp,  false, Keep, Off,  Off,  Off,  Keep, Off,  Off,  Off,  nullptr, nullptr, nullptr},   // DISCONNECTING
    {kOpen, kNot, true,  Keep, Off,  Off,  On,   On,   On,   Off,  Off,  kTrayOff, kTipOff, kSayOff}, // DISCONNECTED
    {kOpen, kNot, false, Keep, Off,  Off,  Off,  Keep, Off,  Off,  Off,  nullptr, kTipOff, nullptr}, // BUSY
    {kOpen, kNot, false, Keep, Off,  Off,  Keep, Keep, Off,  Off,  Off,  nullptr, nullptr, nullptr},   // RECONNECTING
};
// clang-format on

const StatusLook *statusLook(KORVANSTATUS status)
{
    const auto index = static_cast<size_t>(status);
    return index < sizeof kLooks / sizeof kLooks[0] ? &kLooks[index] : nullptr;
}
