#include "helpers/broker/Broker.h"

#include "helpers/broker/Message.h"
#include "helpers/system/Run.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <poll.h>

namespace {

/// A window runs a tunnel, a status command and a route command at a time; more than this is none.
constexpr size_t kMostJobs = 16;

/// How long helpers may take to end by themselves, and then to be gone.
constexpr int kEndLimitMs = 5000;
constexpr int kKillLimitMs = 2000;

} // namespace

Broker::Broker(int window, int process, std::string bundle, uid_t person)
    : m_window(window), m_process(process), m_bundle(std::move(bundle)), m_person(person)
{}

void Broker::serve(int signals)
{
    for (;;) {
        // A child that the window was making when it was killed may hold its end of the socket for ever.
        std::vector<pollfd> events = {{signals, POLLIN, 0}, {m_process, POLLIN, 0}, {m_window, POLLIN, 0}};
        for (const Job &job : m_jobs) { // those without one are -1, which poll() leaves out
            events.push_back({job.channel(), POLLIN, 0});
            events.push_back({job.process(), POLLIN, 0});
        }
        if (poll(events.data(), events.size(), -1) < 0) {
            continue;
        }
        size_t at = 3;
        for (auto job = m_jobs.begin(); job != m_jobs.end(); at += 2) {
            const bool ended = events[at + 1].revents != 0;
            if (ended) {
                job->takeEnd();
            }
            const bool over = ended || (events[at].revents != 0 && !job->takeChannel(m_bundle, m_person));
            job = over ? m_jobs.erase(job) : std::next(job);
        }
        if (events[0].revents != 0 || events[1].revents != 0 || (events[2].revents != 0 && !takeRequest())) {
            return;
        }
    }
}

/// False when the window has ended. What is no request is dropped together with its descriptors, which tells whoever
/// waits for an answer.
bool Broker::takeRequest()
{
    Message message = receiveMessage(m_window, kLongestRequest, 1);
    if (message.state == Message::State::End) {
        return false;
    }
    const auto request = message.state == Message::State::Whole ? parseRequest(message.text) : std::nullopt;
    if (!request || m_jobs.size() >= kMostJobs) {
        return true;
    }
    if (!message.descriptors.empty()) {
        m_jobs.emplace_back(*request, std::move(message.descriptors[0]));
    } else if (Job job(*request, Descriptor()); job.start(m_bundle, m_person, {})) {
        m_jobs.push_back(std::move(job));
    }
    return true;
}

/// Waits until no helper runs, at most `limitMs`.
void Broker::takeEnds(int limitMs)
{
    using std::chrono::steady_clock;
    const auto end = steady_clock::now() + std::chrono::milliseconds(limitMs);
    while (!m_jobs.empty()) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - steady_clock::now()).count();
        pollfd event = {m_jobs.front().process(), POLLIN, 0};
        if (left <= 0 || poll(&event, 1, static_cast<int>(left)) == 0) {
            return;
        }
        if (event.revents != 0) {
            m_jobs.front().takeEnd();
            m_jobs.pop_front();
        }
    }
}

void Broker::endHelpers()
{
    m_jobs.remove_if([](const Job &job) { return !job.isRunning(); });
    for (const Job &job : m_jobs) {
        if (!job.isLeftToItself()) {
            job.send(SIGTERM);
            job.send(SIGCONT);
        }
    }
    takeEnds(kEndLimitMs);
    for (const Job &job : m_jobs) {
        job.send(SIGKILL);
    }
    takeEnds(kKillLimitMs);
}

void Broker::restoreNetwork() const
{
    runToEnd({"/bin/bash", m_bundle + "/down.sh"});
    runToEnd({m_bundle + "/tools/route", "add", "0.0.0.0", "mask", "0.0.0.0"});
}
