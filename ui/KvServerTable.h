#pragma once

#include <QTableWidget>

/// The table of servers. The current row is marked over the whole width, and a cell whose text does not fit tells it
/// in its tool tip. Return does what a click on the header of the current column does.
class KvServerTable : public QTableWidget
{
    Q_OBJECT

public:
    explicit KvServerTable(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
};
