#pragma once

#include <QComboBox>

/// A combo box that shortens a text too long for it in the middle; the whole of it is then its tool tip.
class ElidingComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ElidingComboBox(QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString shownText() const;
};
