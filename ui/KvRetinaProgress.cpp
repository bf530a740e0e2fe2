#include "ui/KvRetinaProgress.h"

#include "ui/StatePicture.h"

#include <QPainter>
#include <QStyle>
#include <QTimerEvent>

namespace {

constexpr int kFrameMs = 40;
constexpr int kRunMs = 1600; // of the glint, from end to end

} // namespace

KvRetinaProgress::KvRetinaProgress(QWidget *parent) : QProgressBar(parent)
{
    setTextVisible(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void KvRetinaProgress::setImages(const QString &pattern)
{
    m_images = pattern;
    update();
}

void KvRetinaProgress::setMoving(bool moving)
{
    m_moving = moving;
    update();
}

void KvRetinaProgress::setDone(bool done)
{
    m_done = done;
    update();
}

void KvRetinaProgress::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawStretched(painter, rect(), statePicture(m_images, "track", this));
    const int range = maximum() - minimum();
    const int done = range > 0 ? static_cast<int>(qint64(width()) * (value() - minimum()) / range) : 0;
    if (done > 0) {
        const char *part = m_done && value() == maximum() ? "done" : "fill";
        const QRect fill(0, 0, qMax(done, height()), height());
        drawStretched(painter, QStyle::visualRect(layoutDirection(), rect(), fill),
                      statePicture(m_images, part, this));
    }
    if (m_moving && isOnItsWay()) {
        const int length = width() / 6;
        const int left = (width() + length) * m_glint / 1000 - length;
        const QRect glint = QRect(left, 0, length, height()) & rect();
        drawStretched(painter, QStyle::visualRect(layoutDirection(), rect(), glint),
                      statePicture(m_images, "glint", this));
        if (!m_clock.isActive()) {
            m_clock.start(kFrameMs, this);
        }
    }
}

void KvRetinaProgress::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_clock.timerId()) {
        QProgressBar::timerEvent(event);
        return;
    }
    if (!isVisible() || !isOnItsWay()) {
        m_clock.stop();
    }
    m_glint = (m_glint + 1000 * kFrameMs / kRunMs) % 1000;
    update();
}
