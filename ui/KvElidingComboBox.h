#pragma once

#include <QComboBox>

/// A combo box for long names. A text too long for it is set in the smaller size; if it is too long even then, it is
/// shortened in its middle, and the whole of it is its tool tip. What is selected in the list while that is closed,
/// as screen readers do, is chosen.
class KvElidingComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit KvElidingComboBox(QWidget *parent = nullptr);

    /// Replaces all items in one go, thousands of them at little cost, and selects the first. `userData` is what
    /// currentData() returns, an entry an item, or empty.
    void setItems(const QStringList &texts, const QStringList &userData = {});

    /// Whether the current text does not fit even in the smaller size.
    bool isShortened() const;

    void showPopup() override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void followList();
    int fieldWidth() const;
    QFont fittingFont() const;
};
