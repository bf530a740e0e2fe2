#include "ui/KvElidingComboBox.h"

#include "ui/Direction.h"
#include "ui/PlainText.h"

#include <QHelpEvent>
#include <QListView>
#include <QStringListModel>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QToolTip>

namespace {

constexpr int kSmallText = 12;
constexpr int kListMargins = 28; // round a text of the list
constexpr int kScrollBar = 20;
constexpr int kWidestList = 480;

/// Shares the lists that it is given: no object an item.
class ItemModel : public QStringListModel
{
public:
    ItemModel(const QStringList &texts, const QStringList &userData, QObject *parent)
        : QStringListModel(texts, parent), m_userData(userData)
    {}

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::UserRole) {
            return QStringListModel::data(index, role);
        }
        return index.row() < m_userData.size() ? m_userData.at(index.row()) : QVariant();
    }

private:
    QStringList m_userData;
};

} // namespace

KvElidingComboBox::KvElidingComboBox(QWidget *parent) : QComboBox(parent)
{
    setProperty("mirrored", isRightToLeft()); // the style sheet mirrors no padding
    // Thousands of servers must not be measured one by one for a size that is the same anyway.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto *list = new QListView(this);
    list->setUniformItemSizes(true);
    list->setTextElideMode(Qt::ElideMiddle);
    setView(list);
    setItemDelegate(new IsolatingDelegate(this)); // the one that heeds the style sheet
    followList();
}

void KvElidingComboBox::followList()
{
    connect(view()->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection &selected) {
                const int row = selected.isEmpty() ? -1 : selected.first().top();
                if (!view()->isVisible() && isEnabled() && row >= 0 && row != currentIndex()) {
                    setCurrentIndex(row);
                    emit activated(row);
                }
            });
}

void KvElidingComboBox::setItems(const QStringList &texts, const QStringList &userData)
{
    setModel(new ItemModel(texts, userData, this)); // deletes the one before, which has the same parent
    followList();
}

int KvElidingComboBox::fieldWidth() const
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this).width() - 2;
}

QFont KvElidingComboBox::fittingFont() const
{
    QFont fitting = font();
    if (fontMetrics().horizontalAdvance(currentText()) > fieldWidth()) {
        fitting.setPixelSize(kSmallText);
    }
    return fitting;
}

bool KvElidingComboBox::isShortened() const
{
    return QFontMetrics(fittingFont()).horizontalAdvance(currentText()) > fieldWidth();
}

bool KvElidingComboBox::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && isShortened()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), plainText(currentText()), this);
        return true;
    }
    return QComboBox::event(event);
}

void KvElidingComboBox::showPopup()
{
    // As wide as the text of most characters: measuring them all would take long with thousands.
    QString longest;
    for (int index = 0; index < count(); ++index) {
        const QString text = itemText(index);
        longest = text.size() > longest.size() ? text : longest;
    }
    const int wanted =
        fontMetrics().horizontalAdvance(longest) + kListMargins + (count() > maxVisibleItems() ? kScrollBar : 0);
    view()->setMinimumWidth(qBound(width(), wanted, kWidestList));
    QComboBox::showPopup();
    QWidget *list = view()->window();
    if (isRightToLeft() && list->width() > width()) { // Qt lets it begin at the left edge here, too
        list->move(qMax(0, mapToGlobal(QPoint(width(), 0)).x() - list->width()), list->y());
    }
}

void KvElidingComboBox::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.setFont(fittingFont());
    option.currentText = isolated(painter.fontMetrics().elidedText(currentText(), Qt::ElideMiddle, fieldWidth()));
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}
