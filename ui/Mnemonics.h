#pragma once

class QApplication;
class QStyle;
class QWidget;

/// The style that underlines the letters which press a control together with Alt only while Alt is held.
QStyle *styleWithMnemonics(QStyle *base, QApplication &application);

/// Gives each button and each caption of a field below `page` a letter of its text that no other there has, in
/// whatever language it is.
void assignMnemonics(const QWidget *page);

/// The flag by which a text with such a letter is drawn now.
int mnemonicFlag();
