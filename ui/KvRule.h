#pragma once

#include <QWidget>

/// A thin line between the rows of a card, of whole pixels: at each scale of the desktop all of them are alike.
class KvRule : public QWidget
{
    Q_OBJECT

public:
    explicit KvRule(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
