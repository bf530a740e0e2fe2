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
    setProperty("connected", connected);
    polishLabels();
}

void KvStatusPanel::setWarning(bool warns)
{
    if (property("warning").toBool() != warns) {
        setProperty("warning", warns);
        polishLabels();
    }
}

void KvStatusPanel::polishLabels()
{
    for (QLabel *label : findChildren<QLabel *>()) {
        style()->unpolish(label); // the style sheet looks at properties only here
        style()->polish(label);
    }
}
