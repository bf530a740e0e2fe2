#include "ui/KvUnaskedBox.h"

#include <QApplication>

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
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease ||
                       event->type() == QEvent::ShortcutOverride || event->type() == QEvent::Shortcut;
    const auto *target = isKey ? qobject_cast<QWidget *>(watched) : nullptr;
    if (target == nullptr || target->window() != this) {
        return QMessageBox::eventFilter(watched, event);
    }
    if (!heedsKeys()) {
        m_quiet.start();
        return true;
    }
    m_answered = true;
    return QMessageBox::eventFilter(watched, event);
}
