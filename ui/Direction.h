#pragma once

#include <QGuiApplication>
#include <QStyledItemDelegate>

/// A name or an address of Latin letters and numbers in a form whose parts and brackets keep their places where the
/// window's language is written from the right.
inline QString isolated(const QString &text)
{
    return QGuiApplication::isRightToLeft() && !text.isRightToLeft() ? QChar(0x2066) + text + QChar(0x2069) : text;
}

/// Shows the items of a list or a table so.
class IsolatingDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant &value, const QLocale &locale) const override
    {
        return isolated(QStyledItemDelegate::displayText(value, locale));
    }
};
