#pragma once

#include "vpn/OpenVPNReader.h"
#include "vpn/Worker.h"

/// The way over OpenVPN: answers its prompts, follows what it prints until it ends, and cleans up after one that was
/// killed.
class OpenVPNWorker : public Worker
{
public:
    using Worker::Worker;

    /// The whole connection. Returns when it has ended or failed, which has been told by then.
    void run();

private:
    OpenVPNOutput readOutput();
    void actOn(OpenVPNOutput output);
    void killOpenVPN();

    OpenVPNReader m_reader;
    bool m_downScriptStarted = false;
};
