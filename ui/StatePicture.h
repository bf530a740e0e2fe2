#pragma once

#include <QPixmap>

class QPainter;
class QWidget;

/// The picture of a resource (":/images/name.png") for a screen of `ratio` pixels a point: above 1 its "@2x" sister,
/// if there is one. A missing picture is null and costs one log line.
QPixmap loadPicture(const QString &resource, qreal ratio);

/// The picture of one state of a family, whose resource name holds "%1" for the state.
QPixmap statePicture(const QString &pattern, const char *state, const QWidget *widget);

/// Draws the picture into `target`, smoothly where the screen's scale is not the picture's.
void drawPicture(QPainter &painter, const QRect &target, const QPixmap &picture);

/// Fills `target` with the picture: its corners of 8 points keep their size and shape, the rest is stretched. A
/// target of the picture's own size shows it as it is.
void drawStretched(QPainter &painter, const QRect &target, const QPixmap &picture);

/// The state of a control as its picture is named: "disable", "press" while it is held down, "hover" under the mouse,
/// else "release".
const char *stateOf(const QWidget *widget, bool down);
