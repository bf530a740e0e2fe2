#include "ui/KvRetinaLabel.h"

#include "ui/StatePicture.h"

#include <QPainter>

KvRetinaLabel::KvRetinaLabel(QWidget *parent) : QLabel(parent) {}

void KvRetinaLabel::setPicture(const QString &resource)
{
    m_picture = resource;
    updateGeometry();
    update();
    emit pictureChanged(resource);
}

QSize KvRetinaLabel::sizeHint() const
{
    return m_picture.isEmpty() ? QSize(0, 0) : loadPicture(m_picture, 1).size();
}

void KvRetinaLabel::paintEvent(QPaintEvent *)
{
    if (m_picture.isEmpty()) {
        return;
    }
    const QPixmap picture = loadPicture(m_picture, devicePixelRatioF());
    QRect place(QPoint(0, 0), picture.size() / picture.devicePixelRatio());
    place.moveCenter(rect().center());
    QPainter painter(this);
    drawPicture(painter, place, picture);
}
