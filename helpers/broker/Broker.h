#pragma once

#include "helpers/broker/Job.h"

#include <list>
#include <string>

/// Starts helpers for one window until that ends, or this process is told to, and leaves the machine's network as it
/// was.
class Broker
{
public:
    /// `window` is the socket that leads to it, `process` a descriptor that becomes readable with its end, `bundle`
    /// the application folder, `person` the number of its user.
    Broker(int window, int process, std::string bundle, uid_t person);

    /// Returns when the window has ended or this process is told to end by one of `signals`, a signal descriptor.
    void serve(int signals);

    /// Ends the helpers that still run. OpenVPN takes its tunnel down by itself; one that does not is killed.
    void endHelpers();

    /// Puts back what tunnels that have ended left changed: name servers, packet filter, default route. Harmless
    /// where nothing is left.
    void restoreNetwork() const;

private:
    bool takeRequest();
    void takeEnds(int limitMs);

    int m_window;
    int m_process;
    std::string m_bundle;
    uid_t m_person;
    std::list<Job> m_jobs;
};
