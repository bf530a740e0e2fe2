#pragma once

#include "vpn/Worker.h"

/// The way over a network service of the system (PPTP, L2TP, IKEv2): dials, asks for the byte counts and hangs up,
/// each with a run of the service helper.
class ServiceWorker : public Worker
{
public:
    using Worker::Worker;

    /// The whole connection. Returns when it has ended or failed, which has been told by then.
    void run();

private:
    bool dial();
    void monitor();
    bool check();
    void cancel();
    void hangUp();
    void failToStop(const QString &text);
};
