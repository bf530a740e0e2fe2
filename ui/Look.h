#pragma once

#include <QSize>

class QApplication;
class QWidget;

/// Of the one window, in points.
constexpr QSize kWindowSize(880, 580);

/// Gives the whole program its look but for the colours (Theme.h): style, font, window icon and the ring round the
/// focused control. To be called once, before the first window is made.
void applyLook(QApplication &application);

/// Makes the form, a whole window of kWindowSize, fit into `room` points where that is smaller, as far as its texts
/// allow. Returns the window's size.
QSize tightened(QWidget *form, const QSize &room);

/// Whether the desktop gave the program dark colours at its start.
bool isDesktopDark();
