#include "ui/KvRetinaTabBar.h"

#include "ui/StatePicture.h"
#include "ui/Theme.h"

#include <QCursor>
#include <QPainter>
#include <QStyle>
#include <QVariant>

namespace {

constexpr int kPicture = 16;
constexpr int kMargin = 16;
constexpr int kGap = 8;
constexpr int kUnderline = 2;

} // namespace

KvRetinaTabBar::KvRetinaTabBar(QWidget *parent) : QTabBar(parent)
{
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(false);
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QTabBar::currentChanged, this, &KvRetinaTabBar::indexChanged);
}

void KvRetinaTabBar::addItem(const QString &pattern, const QString &text)
{
    const int index = addTab(text);
    setTabData(index, pattern);
}

QSize KvRetinaTabBar::tabSizeHint(int index) const
{
    const int words = fontMetrics().horizontalAdvance(tabText(index));
    return {2 * kMargin + kPicture + kGap + words, 47};
}

void KvRetinaTabBar::paintTab(QPainter &painter, int index, bool hovered)
{
    const QRect box = tabRect(index);
    const bool current = index == currentIndex();
    const char *state = current ? "press" : !isTabEnabled(index) ? "disable" : hovered ? "hover" : "release";
    const QRgb colour = current ? colours().link : hovered ? colours().ink : colours().body;

    QRect picture(0, 0, kPicture, kPicture);
    picture.moveCenter(box.center());
    picture.moveLeft(box.left() + kMargin);
    drawPicture(painter, QStyle::visualRect(layoutDirection(), box, picture),
                statePicture(tabData(index).toString(), state, this));
    painter.setPen(QColor(colour));
    const QRect words = box.adjusted(kMargin + kPicture + kGap, 0, 0, 0);
    painter.drawText(QStyle::visualRect(layoutDirection(), box, words), Qt::AlignLeft | Qt::AlignVCenter,
                     tabText(index));
    if (current) {
        painter.fillRect(QRect(box.left(), height() - kUnderline, box.width(), kUnderline), QColor(colour));
    }
}

void KvRetinaTabBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const int hovered = underMouse() ? tabAt(mapFromGlobal(QCursor::pos())) : -1;
    for (int index = 0; index < count(); ++index) {
        paintTab(painter, index, index == hovered);
    }
}
