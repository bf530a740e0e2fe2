#include "ui/StatePicture.h"

#include "ui/Theme.h"

#include <QDebug>
#include <QPainter>
#include <QWidget>
#include <qdrawutil.h>

// The pictures lie in a static library: without this call the linker leaves their registration out.
static void registerPictures()
{
    Q_INIT_RESOURCE(pictures);
}

namespace {

constexpr int kCorner = 8; // points

} // namespace

QPixmap loadPicture(const QString &resource, qreal ratio)
{
    static const bool registered = (registerPictures(), true);
    Q_UNUSED(registered)
    const QString themed = themedPicture(resource);
    QString twice = themed;
    twice.insert(twice.lastIndexOf(QLatin1Char('.')), QLatin1String("@2x"));
    QPixmap picture(ratio > 1 ? twice : themed); // a file name with "@2x" sets the pixmap's own ratio
    if (picture.isNull()) {
        picture.load(themed);
    }
    if (picture.isNull()) {
        qDebug().noquote() << "WARNING: no picture" << resource;
    }
    return picture;
}

QPixmap statePicture(const QString &pattern, const char *state, const QWidget *widget)
{
    return pattern.isEmpty() ? QPixmap()
                             : loadPicture(pattern.arg(QLatin1String(state)), widget->devicePixelRatioF());
}

void drawPicture(QPainter &painter, const QRect &target, const QPixmap &picture)
{
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(target, picture);
}

void drawStretched(QPainter &painter, const QRect &target, const QPixmap &picture)
{
    if (picture.isNull() || target.isEmpty()) {
        return;
    }
    // Put together at the picture's own resolution first, so that no seams show at fractional screen scales.
    const qreal ratio = picture.devicePixelRatio();
    const QSize size = target.size() * ratio;
    QPixmap whole(size);
    whole.fill(Qt::transparent);
    QPixmap raw = picture;
    raw.setDevicePixelRatio(1);
    QPainter builder(&whole);
    const QSize least = raw.size().boundedTo(size);
    const int corner = qMin(qRound(kCorner * ratio), qMin(least.width(), least.height()) / 2);
    qDrawBorderPixmap(&builder, whole.rect(), QMargins(corner, corner, corner, corner), raw);
    builder.end();
    whole.setDevicePixelRatio(ratio);
    drawPicture(painter, target, whole);
}

const char *stateOf(const QWidget *widget, bool down)
{
    if (!widget->isEnabled()) {
        return "disable";
    }
    return down ? "press" : widget->underMouse() ? "hover" : "release";
}
