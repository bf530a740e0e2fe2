#include "ui/KvUnaskedBox.h"

static constexpr int kPauseMs = 1000;

KvUnaskedBox::KvUnaskedBox(Icon icon, const QString &title, const QString &text, QWidget *parent)
    : Unasked(icon, title, text, Ok, parent)
{}

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
    return Unasked::event(event);
}

bool KvUnaskedBox::eventFilter(QObject *watched, QEvent *event)
{
    const auto *widget = qobject_cast<const QWidget *>(watched);
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease ||
                       event->type() == QEvent::ShortcutOverride || event->type() == QEvent::Shortcut;
    if (isKey && widget != nullptr && widget->window() == this) {
        if (!heedsKeys()) {
            m_quiet.start();
            return true;
        }
        m_answered = true;
    }
    return Unasked::eventFilter(watched, event);
}
