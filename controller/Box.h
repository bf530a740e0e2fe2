#pragma once

#include <QMessageBox>

/// A box's text with a further sentence below it, where there is one.
QString joined(const QString &text, const QString &sentence);

/// Shows the box, modal and with exactly one button, Yes. No is named as the default without being offered. Returns
/// whether it was answered with Yes, which is also what closing it means; false when the program quits.
bool onlyYes(QMessageBox &box);
