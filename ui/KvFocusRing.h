#pragma once

#include <QPointer>
#include <QWidget>

class QApplication;

/// The ring round the control that has the keyboard focus: strong round a button, and shown only while the keyboard
/// is in use; a soft halo round a field, shown always. There is one in each window, above everything else and deaf to
/// the mouse.
class KvFocusRing : public QWidget
{
    Q_OBJECT

public:
    /// Lets the rings follow the focus in all windows of the program.
    static void install(QApplication &application);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    explicit KvFocusRing(QWidget *window);
    static KvFocusRing *of(const QWidget *control);
    static void follow(QWidget *old, QWidget *now);
    void surround(QWidget *control);
    void place();

    QPointer<QWidget> m_control;
};
