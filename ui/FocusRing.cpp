#include "ui/FocusRing.h"

#include "ui/Palette.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPainter>
#include <QTabBar>

namespace {

constexpr int kWidth = 3;

bool isField(const QWidget *control)
{
    return qobject_cast<const QLineEdit *>(control) || qobject_cast<const QComboBox *>(control);
}

// A tab bar rings its current tab itself; the lists that pop up need no ring.
bool wantsRing(const QWidget *control)
{
    return control && control->focusPolicy() != Qt::NoFocus && !qobject_cast<const QTabBar *>(control) &&
           control->window()->windowType() != Qt::Popup;
}

} // namespace

FocusRing::FocusRing(QWidget *window) : QWidget(window)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void FocusRing::follow(QWidget *old, QWidget *now)
{
    const auto ringOf = [](const QWidget *control) {
        return control->window()->findChild<FocusRing *>(QString(), Qt::FindDirectChildrenOnly);
    };
    if (FocusRing *left = old ? ringOf(old) : nullptr) {
        left->surround(nullptr);
    }
    if (wantsRing(now)) {
        FocusRing *ring = ringOf(now);
        if (!ring) {
            ring = new FocusRing(now->window());
        }
        ring->surround(now);
    }
}

void FocusRing::surround(QWidget *control)
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

void FocusRing::place()
{
    if (!m_control) {
        hide();
        return;
    }
    const QRect box(m_control->mapTo(window(), QPoint(0, 0)), m_control->size());
    setGeometry(box.adjusted(-kWidth, -kWidth, kWidth, kWidth));
    raise();
    setVisible(m_control->isVisible());
}

bool FocusRing::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
        if (watched == m_control) {
            place();
        }
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void FocusRing::paintEvent(QPaintEvent *)
{
    const bool soft = isField(m_control);
    const qreal pen = soft ? 3 : 2;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(soft ? palette::kHalo : palette::kAction), pen));
    painter.drawRoundedRect(QRectF(rect()).adjusted(pen / 2, pen / 2, -pen / 2, -pen / 2), 9.5, 9.5);
}
