#include "ui/KvRule.h"

#include "ui/Theme.h"

#include <QPainter>

KvRule::KvRule(QWidget *parent) : QWidget(parent) {}

void KvRule::paintEvent(QPaintEvent *)
{
    QPen pen(QColor(colours().softLine), qMax(1, int(devicePixelRatioF())), Qt::SolidLine, Qt::FlatCap);
    pen.setCosmetic(true);
    QPainter painter(this);
    painter.setPen(pen);
    painter.drawLine(QLineF(0, 0.5, width(), 0.5));
}
