#pragma once

#include "platform/Refusal.h"

#include <QByteArray>

/// What to tell a person who can not use the machine's tunnel because somebody else has it: the user of this number.
Refusal heldBy(const QByteArray &user);

/// Takes the machine's tunnel for root's own window, for as long as this process lives. Returns who has it already,
/// or an empty refusal. A lock that can not be opened is no hindrance.
Refusal takeTunnel();
