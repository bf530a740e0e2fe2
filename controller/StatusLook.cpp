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
static constexpr char kTipDown[] = QT_TRANSLATE_NOOP("Korvan", "Korvan: Disconnecting...");
static constexpr char kNoteUp[] = QT_TRANSLATE_NOOP("Korvan", "Connecting...");
static constexpr char kNoteDown[] = QT_TRANSLATE_NOOP("Korvan", "Disconnecting...");
static constexpr char kNoteAgain[] = QT_TRANSLATE_NOOP("Korvan", "Reconnecting...");
static constexpr char kNoteLost[] = QT_TRANSLATE_NOOP("Korvan", "The connection has failed.");

static constexpr Turn Keep = Turn::Keep;
static constexpr Turn Off = Turn::Off;
static constexpr Turn On = Turn::On;

// clang-format off
// What is not protected never looks protected: the tray icon says so before the tunnel is down, and a status on the way
// down keeps the picture that it finds.
static constexpr StatusLook kLooks[] = {
    // picture text connect-shown | connect disconnect reconnect choice update | tray: connect disconnect reconnect
    // INIT
    {kOpen, kNot, true,  On,   On,   Keep, Off,  Keep, Keep, Keep, Keep, kTrayOff, nullptr, nullptr, nullptr},
    // READY
    {kOpen, kNot, true,  Keep, Off,  Off,  On,   On,   On,   Off,  Off,  kTrayOff, kTipOff, nullptr, nullptr},
    // CONNECTING
    {kOpen, kNot, false, Keep, On,   Off,  Off,  Off,  Off,  On,   Off,  kTrayOff, kTipConnecting, kSayConnecting,
     kNoteUp},
    // CONNECTED
    {kShut, kUp,  false, Keep, On,   On,   Off,  Off,  Off,  On,   On,   kTrayOn,  kTipUp,  kSayUp,  nullptr},
    // DISCONNECTING
    {nullptr, nullptr, false, Keep, Off, Off, Off, Keep, Off, Off, Off,  kTrayOff, kTipDown, nullptr, kNoteDown},
    // DISCONNECTED
    {kOpen, kNot, true,  Keep, Off,  Off,  On,   On,   On,   Off,  Off,  kTrayOff, kTipOff, kSayOff, nullptr},
    // BUSY
    {kOpen, kNot, false, Keep, Off,  Off,  Off,  Keep, Off,  Off,  Off,  kTrayOff, kTipOff, nullptr, nullptr},
    // RECONNECTING
    {kOpen, kNot, false, Keep, Off,  Off,  Keep, Off,  Off,  Off,  Off,  kTrayOff, kTipOff, nullptr, kNoteAgain},
};
static constexpr StatusLook kLost = {kOpen, kNot, false,    Keep,    Keep,    Keep,     Keep, Keep, Keep, Keep,
                                     Keep,  kTrayOff, kTipOff, nullptr, kNoteLost};
// clang-format on

const StatusLook &lostLook()
{
    return kLost;
}

const StatusLook *statusLook(KORVANSTATUS status)
{
    const auto index = static_cast<size_t>(status);
    return index < sizeof kLooks / sizeof kLooks[0] ? &kLooks[index] : nullptr;
}
