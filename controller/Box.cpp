#include "controller/Box.h"

bool onlyYes(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text)
{
    QMessageBox box(icon, title, text, QMessageBox::Yes, parent);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}
