#include "ui/KvStatusPanel.h"

#include "ui/KvRetinaProgress.h"

#include <QLabel>
#include <QStyle>
#include <QVariant>

KvStatusPanel::KvStatusPanel(QWidget *parent) : QFrame(parent) {}

void KvStatusPanel::showPicture(const QString &resource)
{
    const bool connected = resource.endsWith(QLatin1String("_connected.png"));
    for (KvRetinaProgress *bar : findChildren<KvRetinaProgress *>()) {
        bar->setDone(connected);
    }
    mark("connected", connected);
}

void KvStatusPanel::setWarning(bool warns)
{
    mark("warning", warns);
}

void KvStatusPanel::mark(const char *what, bool isSo)
{
    if (property(what) == isSo) {
        return;
    }
    setProperty(what, isSo);
    for (QLabel *label : findChildren<QLabel *>()) {
        style()->unpolish(label); // the style sheet looks at properties only here
        style()->polish(label);
    }
}
