#include "ui/KvWindowHeader.h"

#include <QMouseEvent>
#include <QWindow>

KvWindowHeader::KvWindowHeader(QWidget *parent) : QFrame(parent)
{
    window()->setWindowFlag(Qt::FramelessWindowHint);
}

void KvWindowHeader::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    QWindow *handle = window()->windowHandle();
    if (!handle || !handle->startSystemMove()) {
        m_grip = event->globalPos() - window()->pos();
    }
}

void KvWindowHeader::mouseMoveEvent(QMouseEvent *event)
{
    if (m_grip) {
        window()->move(event->globalPos() - *m_grip);
    }
}

void KvWindowHeader::mouseReleaseEvent(QMouseEvent *)
{
    m_grip.reset();
}
