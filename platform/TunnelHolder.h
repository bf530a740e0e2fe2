#pragma once

#include <QString>

/// What to tell a person who can not use the machine's tunnel because somebody else has it: the user of this number.
QString heldBy(const QByteArray &user);

/// Takes the machine's tunnel for root's own window, for as long as this process lives. Returns who has it already,
/// in words for the person, or an empty text. A lock that can not be opened is no hindrance.
QString takeTunnel();
