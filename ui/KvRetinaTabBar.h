#pragma once

#include <QTabBar>

/// The row of page tabs below the header: a picture and a word each, the current one underlined. The arrow keys move
/// between the tabs.
class KvRetinaTabBar : public QTabBar
{
    Q_OBJECT

public:
    explicit KvRetinaTabBar(QWidget *parent = nullptr);

    /// Appends a tab. The pattern names its pictures, with "%1" for the state: "press" is the current tab's.
    void addItem(const QString &pattern, const QString &text);

signals:
    void indexChanged(int index);

protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }
    void paintEvent(QPaintEvent *event) override;

private:
    void paintTab(QPainter &painter, int index, bool hovered);
};
