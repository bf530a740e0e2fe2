#include "ui/News.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>
#include <QVariant>

namespace {

class NewsAccessible : public QAccessibleWidget
{
public:
    explicit NewsAccessible(QLabel *label) : QAccessibleWidget(label, QAccessible::Notification) {}

    QString text(QAccessible::Text kind) const override
    {
        const QString text = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && text.isEmpty() ? static_cast<QLabel *>(widget())->text() : text;
    }
};

QAccessibleInterface *makeNews(const QString &, QObject *object)
{
    auto *label = qobject_cast<QLabel *>(object);
    return label != nullptr && label->property("news").toBool() ? new NewsAccessible(label) : nullptr;
}

} // namespace

void installNews()
{
    QAccessible::installFactory(makeNews);
}

void readOut(QLabel *label)
{
    if (!label->isVisible()) {
        return;
    }
    // Qt's bridge to the desktop drops alerts. Readers take it for a new notification.
    QAccessibleEvent news(label, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&news);
}
