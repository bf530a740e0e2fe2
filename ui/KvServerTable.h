#pragma once

#include <QTableWidget>

/// The table of servers. The current row is marked over the whole width, and a cell whose text does not fit tells it
/// in its tool tip.
class KvServerTable : public QTableWidget
{
    Q_OBJECT

public:
    explicit KvServerTable(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool viewportEvent(QEvent *event) override;
};
