#pragma once

#include <QPainterPath>

/// The outline of a sign on a grid of 24 x 24, to be drawn with a round pen. Stops the painter with a message when
/// there is no such sign.
QPainterPath glyph(const char *name);
