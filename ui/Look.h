#pragma once

#include <QSize>

class QApplication;

/// Of the one window, in points.
constexpr QSize kWindowSize(880, 580);

/// Gives the whole program its look: style, font, style sheet, window icon and the ring round the focused control.
/// To be called once, before the first window is made.
void applyLook(QApplication &application);

/// Whether the desktop gave the program dark colours at its start.
bool isDesktopDark();
