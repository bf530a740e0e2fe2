#include "ui/KvFocusRing.h"

#include "ui/Theme.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPainter>
#include <QTabBar>

namespace {

constexpr int kWidth = 3;
constexpr qreal kCorner = 8; // of the controls

bool isField(const QWidget *control)
{
    return qobject_cast<const QLineEdit *>(control) || qobject_cast<const QComboBox *>(control);
}

bool wantsRing(const QWidget *control)
{
    return control && control->focusPolicy() != Qt::NoFocus && control->window()->windowType() != Qt::Popup;
}

// Tells whether the user's last action was a key or a click.
class LastInput : public QObject
{
public:
    using QObject::QObject;

    static bool isKey() { return s_key; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress) {
            s_key = event->type() == QEvent::KeyPress;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    static bool s_key;
};

bool LastInput::s_key = false;

} // namespace

KvFocusRing::KvFocusRing(QWidget *window) : QWidget(window)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void KvFocusRing::install(QApplication &application)
{
    application.installEventFilter(new LastInput(&application));
    connect(&application, &QApplication::focusChanged, &KvFocusRing::follow);
}

KvFocusRing *KvFocusRing::of(const QWidget *control)
{
    return control->window()->findChild<KvFocusRing *>(QString(), Qt::FindDirectChildrenOnly);
}

void KvFocusRing::follow(QWidget *old, QWidget *now)
{
    if (KvFocusRing *left = old ? of(old) : nullptr) {
        left->surround(nullptr);
    }
    if (wantsRing(now)) {
        KvFocusRing *ring = of(now);
        if (!ring) {
            ring = new KvFocusRing(now->window());
        }
        ring->surround(now);
    }
}

void KvFocusRing::surround(QWidget *control)
{
    if (m_control) {
        m_control->removeEventFilter(this);
    }
    m_control = control;
    if (m_control) {
        m_control->installEventFilter(this);
    }
    place();
}

void KvFocusRing::place()
{
    if (!m_control || !m_control->isVisible() || !(isField(m_control) || LastInput::isKey())) {
        hide();
        return;
    }
    const QWidget *framed = m_control;
    QRect box = framed->rect();
    if (const auto *tabs = qobject_cast<const QTabBar *>(framed)) {
        box = tabs->tabRect(tabs->currentIndex()).adjusted(4, 8, -4, -8);
    } else if (qobject_cast<const QCheckBox *>(framed)) {
        box.adjust(-2, 0, 2, 0); // a check box has no frame of its own to keep it off its sign
    } else if (qobject_cast<const QAbstractScrollArea *>(framed)) {
        framed = framed->parentWidget(); // lists and texts fill a card
        box = framed->rect();
    }
    box.moveTopLeft(framed->mapTo(window(), box.topLeft()));
    setGeometry(box.adjusted(-kWidth, -kWidth, kWidth, kWidth));
    raise();
    show();
}

bool KvFocusRing::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::KeyRelease:
    case QEvent::MouseButtonRelease:
        place();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void KvFocusRing::paintEvent(QPaintEvent *)
{
    const bool soft = isField(m_control);
    const qreal pen = soft ? kWidth : kWidth - 1;
    const qreal radius = kCorner + kWidth - pen / 2;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(soft ? colours().ring : colours().link), pen));
    painter.drawRoundedRect(QRectF(rect()).adjusted(pen / 2, pen / 2, -pen / 2, -pen / 2), radius, radius);
}
