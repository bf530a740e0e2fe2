#include "ui/WindowHeader.h"

#include <QMouseEvent>
#include <QWindow>

WindowHeader::WindowHeader(QWidget *parent) : QFrame(parent)
{
    window()->setWindowFlag(Qt::FramelessWindowHint);
}

void WindowHeader::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    QWindow *handle = window()->windowHandle();
    if (!handle || !handle->startSystemMove()) {
        m_grip = event->globalPos() - window()->pos();
    }
}

void WindowHeader::mouseMoveEvent(QMouseEvent *event)
{
    if (m_grip) {
        window()->move(event->globalPos() - *m_grip);
    }
}

void WindowHeader::mouseReleaseEvent(QMouseEvent *)
{
    m_grip.reset();
}
