#include "ui/Unasked.h"

#include <QMainWindow>

/// Also of what was not sent by the desktop itself: while a screen reader runs, Qt sends a copy of every key.
static bool isInput(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::Close:
        return event.spontaneous();
    default:
        return false;
    }
}

bool goesBehind(const QWidget &dialog, const QObject *target, QEvent *event)
{
    if (!dialog.isModal() || !dialog.isVisible() || !isInput(*event)) {
        return false;
    }
    const auto *widget = qobject_cast<const QWidget *>(target);
    if (widget == nullptr || qobject_cast<const QMainWindow *>(widget->window()) == nullptr) {
        return false;
    }
    event->setAccepted(event->type() == QEvent::ShortcutOverride); // as a key, which goes nowhere
    return true;
}
