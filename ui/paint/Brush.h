#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

/// `colour` mixed with `other`, of which it takes the share `part` (0 to 1).
QColor mixed(QRgb colour, QRgb other, qreal part);

/// A filled rounded rectangle with a border of one pixel inside it. Either colour may be transparent.
void drawBox(QPainter &painter, const QRectF &box, qreal radius, const QColor &fill,
             const QColor &border = Qt::transparent);

/// A filled circle.
void drawDisc(QPainter &painter, const QRectF &box, const QColor &fill);

/// The sign `name` scaled into `box`, drawn with a round pen of `pen` pixels.
void drawGlyph(QPainter &painter, const char *name, const QRectF &box, const QColor &colour, qreal pen);

/// The program's own sign: a shield, filled, in `box`.
void drawShield(QPainter &painter, const QRectF &box, const QColor &fill);
