#include "ui/ElidingComboBox.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QToolTip>

namespace {

constexpr int kSmallText = 12;

} // namespace

ElidingComboBox::ElidingComboBox(QWidget *parent) : QComboBox(parent)
{
    // Thousands of servers must not be measured one by one for a width that is fixed anyway.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    view()->setTextElideMode(Qt::ElideMiddle);
}

int ElidingComboBox::fieldWidth() const
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this).width() - 2;
}

QFont ElidingComboBox::fittingFont() const
{
    QFont fitting = font();
    if (fontMetrics().horizontalAdvance(currentText()) > fieldWidth()) {
        fitting.setPixelSize(kSmallText);
    }
    return fitting;
}

bool ElidingComboBox::isShortened() const
{
    return QFontMetrics(fittingFont()).horizontalAdvance(currentText()) > fieldWidth();
}

bool ElidingComboBox::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && isShortened()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), currentText(), this);
        return true;
    }
    return QComboBox::event(event);
}

void ElidingComboBox::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.setFont(fittingFont());
    option.currentText = painter.fontMetrics().elidedText(currentText(), Qt::ElideMiddle, fieldWidth());
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}
