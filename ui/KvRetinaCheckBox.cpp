#include "ui/KvRetinaCheckBox.h"

#include "ui/Mnemonics.h"
#include "ui/StatePicture.h"
#include "ui/Theme.h"

#include <QPainter>
#include <QStyle>

namespace {

constexpr int kMark = 18;
constexpr int kTextLeft = kMark + 10;
constexpr int kLineHeight = 18;

} // namespace

KvRetinaCheckBox::KvRetinaCheckBox(QWidget *parent) : QCheckBox(parent)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
}

void KvRetinaCheckBox::setImages(const QString &pattern)
{
    m_images = pattern;
    update();
}

QFont KvRetinaCheckBox::hintFont() const
{
    QFont font = this->font();
    font.setPixelSize(12);
    return font;
}

QSize KvRetinaCheckBox::sizeHint() const
{
    const QString hint = accessibleDescription();
    const int width = qMax(fontMetrics().size(Qt::TextShowMnemonic, text()).width(),
                           QFontMetrics(hintFont()).horizontalAdvance(hint));
    return {kTextLeft + width + 4, hint.isEmpty() ? 22 : 2 * kLineHeight};
}

/// The place of a part that the given box has where one reads from left to right.
QRect KvRetinaCheckBox::visual(const QRect &box) const
{
    return QStyle::visualRect(layoutDirection(), rect(), box);
}

bool KvRetinaCheckBox::hitButton(const QPoint &point) const
{
    return visual({0, 0, sizeHint().width(), height()}).contains(point);
}

void KvRetinaCheckBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QByteArray state = stateOf(this, isDown());
    if (isChecked()) {
        state.prepend("checked_");
    }
    const QPixmap mark = statePicture(m_images, state.constData(), this);
    drawPicture(painter, visual({0, (height() - kMark) / 2, kMark, kMark}), mark);

    const QString hint = accessibleDescription();
    QRect line = visual({kTextLeft, 0, width() - kTextLeft, hint.isEmpty() ? height() : height() / 2});
    painter.setPen(QColor(isEnabled() ? colours().ink : colours().disabled));
    painter.drawText(line, int(Qt::AlignLeft | Qt::AlignVCenter) | mnemonicFlag(), text());
    if (!hint.isEmpty()) {
        line.moveTop(height() / 2);
        painter.setPen(QColor(isEnabled() ? colours().body : colours().disabled));
        painter.setFont(hintFont());
        painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, hint);
    }
}
