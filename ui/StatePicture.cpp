#include "ui/StatePicture.h"

#include <QDebug>
#include <QPainter>
#include <QWidget>

#include <array>

// The pictures lie in a static library: without this call the linker leaves their registration out.
static void registerPictures()
{
    Q_INIT_RESOURCE(pictures);
}

namespace {

constexpr int kCorner = 8; // points

struct Span
{
    int from;
    int length;
};

// One axis cut into head, middle and tail.
std::array<Span, 3> cut(int length, int corner)
{
    const int end = qMin(corner, length / 2);
    return {Span{0, end}, Span{end, length - 2 * end}, Span{length - end, end}};
}

} // namespace

QPixmap loadPicture(const QString &resource, qreal ratio)
{
    static const bool registered = (registerPictures(), true);
    Q_UNUSED(registered)
    QString twice = resource;
    twice.insert(twice.lastIndexOf(QLatin1Char('.')), QLatin1String("@2x"));
    QPixmap picture(ratio > 1 ? twice : resource); // a file name with "@2x" sets the pixmap's own ratio
    if (picture.isNull()) {
        picture.load(resource);
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
    const int corner = qRound(kCorner * ratio);
    const auto rows = cut(size.height(), qMin(corner, raw.height() / 2));
    const auto columns = cut(size.width(), qMin(corner, raw.width() / 2));
    const auto sourceRows = cut(raw.height(), rows[0].length);
    const auto sourceColumns = cut(raw.width(), columns[0].length);
    for (size_t row = 0; row < rows.size(); ++row) {
        for (size_t column = 0; column < columns.size(); ++column) {
            builder.drawPixmap(QRect(columns[column].from, rows[row].from, columns[column].length, rows[row].length),
                               raw,
                               QRect(sourceColumns[column].from, sourceRows[row].from, sourceColumns[column].length,
                                     sourceRows[row].length));
        }
    }
    builder.end();
    whole.setDevicePixelRatio(ratio);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(target, whole);
}

const char *stateOf(const QWidget *widget, bool down)
{
    if (!widget->isEnabled()) {
        return "disable";
    }
    return down ? "press" : widget->underMouse() ? "hover" : "release";
}
