#pragma once

class QApplication;

/// Gives the whole program its look: style, font, style sheet, window icon and the ring round the focused control.
/// To be called once, before the first window is made.
void applyLook(QApplication &application);
