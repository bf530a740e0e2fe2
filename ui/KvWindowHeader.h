#pragma once

#include <QFrame>

#include <optional>

/// The window's own title bar. It takes the desktop's frame off the window that it is built into, and drags that
/// window, through the window manager where there is one.
class KvWindowHeader : public QFrame
{
    Q_OBJECT

public:
    explicit KvWindowHeader(QWidget *parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    std::optional<QPoint> m_grip; ///< where the window is held, from its corner, while this widget moves it itself
};
