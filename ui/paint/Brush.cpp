#include "ui/paint/Brush.h"

#include "ui/paint/Glyphs.h"

#include <QPainter>

namespace {

constexpr qreal kGrid = 24; // of the signs

QPainterPath glyphIn(const char *name, const QRectF &box)
{
    QTransform toBox = QTransform::fromTranslate(box.x(), box.y());
    toBox.scale(box.width() / kGrid, box.height() / kGrid);
    return toBox.map(glyph(name));
}

} // namespace

QColor mixed(QRgb colour, QRgb other, qreal part)
{
    const QColor a(colour);
    const QColor b(other);
    const auto mix = [part](qreal x, qreal y) { return x + (y - x) * part; };
    return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()), mix(a.blueF(), b.blueF()));
}

void drawBox(QPainter &painter, const QRectF &box, qreal radius, const QColor &fill, const QColor &border)
{
    const bool bordered = border.alpha() > 0;
    painter.setPen(bordered ? QPen(border, 1) : QPen(Qt::NoPen));
    painter.setBrush(fill);
    const qreal inset = bordered ? 0.5 : 0;
    painter.drawRoundedRect(box.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
}

void drawDisc(QPainter &painter, const QRectF &box, const QColor &fill)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawEllipse(box);
}

void drawGlyph(QPainter &painter, const char *name, const QRectF &box, const QColor &colour, qreal pen)
{
    painter.setPen(QPen(colour, pen, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(glyphIn(name, box));
}

void drawShield(QPainter &painter, const QRectF &box, const QColor &fill)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawPath(glyphIn("shield", box));
}
