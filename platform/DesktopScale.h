#pragma once

#include <QByteArray>
#include <QSize>

/// The desktop's scale. Lets the program follow it by any fraction, but no further than its window fits on the
/// screen. To be made before the application object, which reads the environment that this sets.
class DesktopScale
{
public:
    /// `window` is the window's size in points.
    explicit DesktopScale(const QSize &window);

    /// Puts the environment back for the programs that this one starts. To be called once the application is there.
    void restoreEnvironment() const;

    /// The factor `wanted`, or the greatest one, in hundredths, at which the window fits into `room` pixels.
    /// Never less than 1, unless that is wanted.
    static qreal fitting(qreal wanted, const QSize &window, const QSize &room);

private:
    QByteArray m_scaleBefore, m_dpiBefore;
};
