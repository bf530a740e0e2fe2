#include "controller/Box.h"

bool onlyYes(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text)
{
    QMessageBox box(icon, title, text, QMessageBox::Yes, parent);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

QString joined(const QString &text, const QString &sentence)
{
    return sentence.isEmpty() ? text : text + QLatin1String("\n\n") + sentence;
}
