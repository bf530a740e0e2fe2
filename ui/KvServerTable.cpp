#include "ui/KvServerTable.h"

#include "ui/Direction.h"
#include "ui/PlainText.h"
#include "ui/Theme.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

static constexpr int kMark = 3; // the bar that the eye finds the current row by

KvServerTable::KvServerTable(QWidget *parent) : QTableWidget(parent)
{
    setTabKeyNavigation(false);
    setTextElideMode(Qt::ElideMiddle);
    setItemDelegate(new IsolatingDelegate(this));
    verticalHeader()->hide();
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(true);
}

void KvServerTable::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && currentColumn() >= 0) {
        emit horizontalHeader()->sectionClicked(currentColumn());
        return;
    }
    QTableWidget::keyPressEvent(event);
}

void KvServerTable::paintEvent(QPaintEvent *event)
{
    const int row = selectionModel()->hasSelection() ? currentRow() : -1;
    if (row >= 0) {
        QPainter painter(viewport());
        painter.fillRect(QRect(0, rowViewportPosition(row), viewport()->width(), rowHeight(row)),
                         QColor(colours().actionSoft));
    }
    QTableWidget::paintEvent(event);
    if (row >= 0) {
        const int start = isRightToLeft() ? viewport()->width() - kMark : 0;
        QPainter(viewport())
            .fillRect(QRect(start, rowViewportPosition(row), kMark, rowHeight(row)), QColor(colours().link));
    }
}

bool KvServerTable::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const QModelIndex cell = indexAt(help->pos());
        const QString text = cell.data().toString();
        if (cell.isValid() && sizeHintForIndex(cell).width() > columnWidth(cell.column())) {
            QToolTip::showText(help->globalPos(), plainText(text), this);
            return true;
        }
    }
    return QTableWidget::viewportEvent(event);
}

void KvServerTable::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTableWidget::selectionChanged(selected, deselected);
    viewport()->update(); // the mark is wider than the cells
}
