#pragma once

#include <QAbstractItemModel>

/// Removes every row of a QTableWidget, or of any other item view; columns and headers stay. All rows go in one step,
/// so the cost does not grow with the square of their number.
template <typename TableWidget> void QTableWidget_clear(TableWidget *table)
{
    if (table->rowCount() > 0) {
        table->model()->removeRows(0, table->rowCount());
    }
}
