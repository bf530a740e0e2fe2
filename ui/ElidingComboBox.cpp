#include "ui/ElidingComboBox.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QToolTip>

ElidingComboBox::ElidingComboBox(QWidget *parent) : QComboBox(parent)
{
    // Thousands of servers must not be measured one by one for a width that is fixed anyway.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    view()->setTextElideMode(Qt::ElideMiddle);
}

QString ElidingComboBox::shownText() const
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect field = style()
                            ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this)
                            .adjusted(1, 0, -1, 0);
    return fontMetrics().elidedText(currentText(), Qt::ElideMiddle, field.width());
}

bool ElidingComboBox::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && shownText() != currentText()) {
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
    option.currentText = shownText();
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}
