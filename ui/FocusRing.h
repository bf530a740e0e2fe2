#pragma once

#include <QPointer>
#include <QWidget>

/// The ring round the control that has the keyboard focus: strong round a button, a soft halo round a field. There is
/// one in each window, above everything else and deaf to the mouse.
class FocusRing : public QWidget
{
    Q_OBJECT

public:
    /// Moves the ring from the control that had the focus to the one that has it now; either may be null.
    static void follow(QWidget *old, QWidget *now);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    explicit FocusRing(QWidget *window);
    void surround(QWidget *control);
    void place();

    QPointer<QWidget> m_control;
};
