#include "controller/Box.h"

bool onlyYes(QMessageBox &box)
{
    box.setStandardButtons(QMessageBox::Yes);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

QString joined(const QString &text, const QString &sentence)
{
    return sentence.isEmpty() ? text : text + QLatin1String("\n\n") + sentence;
}
