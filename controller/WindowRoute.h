#pragma once

#include <QString>

#include <future>

class QWidget;

namespace Ui {
class Korvan;
}

/// The machine's own default route as the window guards it: lock-down, which takes it away while a tunnel is up, the
/// kill switch, which takes it away when a tunnel breaks, and the gateway by which it comes back.
class WindowRoute
{
public:
    explicit WindowRoute(const Ui::Korvan *form) : m_form(form) {}

    /// At the start: remembers the gateway, and puts the route back that a previous run has left deleted. Waits in an
    /// event loop.
    void repair();

    /// Remembers the gateway before an attempt to connect: the machine may be in another network by now. While there
    /// is no default route the remembered one stays. Does not wait for it: the tunnel is on its way meanwhile.
    void remember();

    /// The tunnel is up: locks down where the user wants it.
    void enterTunnel();

    /// No tunnel is up: ends a lock-down, also one that an earlier run may have left.
    void leaveTunnel();

    /// The options were saved: a lock-down that is switched off ends at once, and one that is switched on while a
    /// tunnel is up begins at once.
    void optionsSaved(bool isTunnelUp);

    /// True while nothing but the tunnel leads out of the machine.
    bool isLockedDown() const { return m_lockedDown; }

    /// The program ends, and guards nothing from then on.
    void release();

    /// The kill switch: no program may send outside the broken tunnel before the user knows of it. Returns when the
    /// box over the window is confirmed and the route is back.
    void cutOff(QWidget *window);

private:
    bool isLockDownWanted() const;
    QString gateway();
    void lockDown();
    void restore();

    const Ui::Korvan *m_form;
    std::future<QString> m_question; ///< for the gateway, until its answer is needed
    QString m_gateway;
    bool m_lockedDown = false;
};
