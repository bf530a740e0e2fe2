#pragma once

#include "ui/Palette.h"

#include <QString>

/// The colours in which the program is shown now.
const Palette &colours();

bool isDark();

/// Takes the dark or the light colours from now on. What is shown already follows by showTheme() alone.
void setDark(bool dark);

/// The picture of a resource (":/images/name.png") as it is painted for the colours of now.
QString themedPicture(const QString &resource);

/// Shows every window of the program in the colours of now: the style sheet, the palette, the pictures.
void showTheme();
