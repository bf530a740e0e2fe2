#pragma once

#include "vpn/HelperOutput.h"
#include "vpn/Worker.h"

/// The way over the SSTP client, which reports in a log file.
class SstpWorker : public Worker
{
public:
    using Worker::Worker;

    /// The whole connection. Returns when it has ended or failed, which has been told by then.
    void run();

private:
    void followLog();
    SstpOutput actOn(const QString &chunk);
    void pause();
};
