#include "ui/KvTextLine.h"

#include "ui/PlainText.h"
#include "ui/Theme.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace {

constexpr int kGap = 12;                           // between caption and text
const QString kNothing = QStringLiteral("\u2013"); // shown in place of an empty text

} // namespace

KvTextLine::KvTextLine(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

void KvTextLine::setCaption(const QString &caption)
{
    m_caption = caption;
    setAccessibleDescription(caption);
    updateGeometry();
    update();
}

QSize KvTextLine::minimumSizeHint() const
{
    const int caption = m_caption.isEmpty() ? 0 : fontMetrics().horizontalAdvance(m_caption) + kGap;
    return {caption + fontMetrics().averageCharWidth() * 8, fontMetrics().height()};
}

QRect KvTextLine::textBox() const
{
    QRect box = contentsRect();
    if (!m_caption.isEmpty() && !isCaptionItself()) {
        box.setLeft(box.left() + fontMetrics().horizontalAdvance(m_caption) + kGap);
    }
    return QStyle::visualRect(layoutDirection(), contentsRect(), box);
}

bool KvTextLine::event(QEvent *event)
{
    // A tool tip that somebody set wins over the shortened text.
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() &&
        fontMetrics().horizontalAdvance(text()) > textBox().width()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), plainText(text()), this);
        return true;
    }
    return QLabel::event(event);
}

void KvTextLine::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect box = textBox();
    const QString shown =
        text().isEmpty() ? kNothing : fontMetrics().elidedText(text().trimmed(), Qt::ElideMiddle, box.width());
    const auto drawText = [&](Qt::Alignment alignment) {
        // An address reads from left to right in each language.
        const int direction = shown.isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight;
        painter.drawText(box, int(QStyle::visualAlignment(layoutDirection(), alignment)) | direction, shown);
    };
    if (m_caption.isEmpty()) {
        painter.setPen(palette().color(foregroundRole()));
        drawText(alignment());
        return;
    }
    painter.setPen(QColor(colours().body));
    if (isCaptionItself()) {
        drawText(Qt::AlignLeft | Qt::AlignVCenter);
    } else {
        painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, m_caption);
        painter.setPen(QColor(colours().ink));
        drawText(Qt::AlignRight | Qt::AlignVCenter);
    }
}
