#include "ui/KvUnaskedBox.h"

#include <QApplication>
#include <QMainWindow>

static constexpr int kPauseMs = 1000;

KvUnaskedBox::KvUnaskedBox(Icon icon, const QString &title, const QString &text, QWidget *parent)
    : QMessageBox(icon, title, text, Ok, parent)
{
    if (QApplication::activeWindow() == nullptr) {
        setAttribute(Qt::WA_ShowWithoutActivating);
    }
    qApp->installEventFilter(this);
}

void KvUnaskedBox::tell(QWidget *parent, Icon icon, const QString &title, const QString &text)
{
    KvUnaskedBox(icon, title, text, parent).exec();
}

bool KvUnaskedBox::heedsKeys() const
{
    return m_answered || (isActiveWindow() && m_quiet.isValid() && m_quiet.elapsed() >= kPauseMs);
}

void KvUnaskedBox::setVisible(bool visible)
{
    if (!visible || !testAttribute(Qt::WA_ShowWithoutActivating)) {
        QMessageBox::setVisible(visible);
        return;
    }
    const Qt::WindowModality modality = windowModality();
    // Qt activates what comes up modal, whatever the attribute says; the message box's own setter would hide it
    // again.
    QWidget::setWindowModality(Qt::NonModal);
    QMessageBox::setVisible(true);
    QWidget::setWindowModality(modality);
}

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

/// Whether a person's input goes to the main window, which Qt does not keep from it where the box did not come up
/// modal.
bool KvUnaskedBox::blocks(const QWidget &target, const QEvent &event) const
{
    return isModal() && isVisible() && isInput(event) &&
           qobject_cast<const QMainWindow *>(target.window()) != nullptr;
}

bool KvUnaskedBox::event(QEvent *event)
{
    if (event->type() == QEvent::Show || event->type() == QEvent::WindowActivate) {
        m_quiet.start();
    }
    const bool comes = event->type() == QEvent::Show;
    const bool done = QMessageBox::event(event);
    if (comes && !isActiveWindow()) {
        QApplication::alert(this);
    }
    return done;
}

bool KvUnaskedBox::eventFilter(QObject *watched, QEvent *event)
{
    const auto *widget = qobject_cast<const QWidget *>(watched);
    if (widget != nullptr && blocks(*widget, *event)) {
        event->setAccepted(event->type() == QEvent::ShortcutOverride); // as a key, which goes nowhere
        return true;
    }
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease ||
                       event->type() == QEvent::ShortcutOverride || event->type() == QEvent::Shortcut;
    if (!isKey || widget == nullptr || widget->window() != this) {
        return QMessageBox::eventFilter(watched, event);
    }
    if (!heedsKeys()) {
        m_quiet.start();
        return true;
    }
    m_answered = true;
    return QMessageBox::eventFilter(watched, event);
}
