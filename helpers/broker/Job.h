#pragma once

#include "helpers/broker/Request.h"
#include "helpers/system/Descriptor.h"

#include <string>
#include <sys/types.h>
#include <vector>

/// One helper that the window asked for. It has a channel to the window: over it come the helper's three standard
/// streams, its status goes back, and when the other end is closed the helper is killed. Without a channel it is left
/// to itself.
class Job
{
public:
    Job(Request request, Descriptor channel) : m_request(std::move(request)), m_channel(std::move(channel)) {}

    int channel() const { return m_channel; }
    /// Becomes readable with the helper's end; -1 before its start.
    int process() const { return m_process; }
    bool isRunning() const { return m_pid > 0; }
    bool isLeftToItself() const { return m_channel < 0; }

    /// Takes what came over the channel: the streams, with which the helper starts. `person` is the number of the
    /// window's user, with whose rights the helper reads files. False when the job is over.
    bool takeChannel(const std::string &bundle, uid_t person);
    /// Starts the helper with these streams, or with none. False when that failed.
    bool start(const std::string &bundle, uid_t person, const std::vector<Descriptor> &streams);
    void send(int signal) const;
    /// The helper has ended: tells its status.
    void takeEnd();

private:
    Request m_request;
    Descriptor m_channel;
    Descriptor m_process;
    pid_t m_pid = -1;
};
