#include "lab/service/Orders.h"

#include <charconv>
#include <chrono>

namespace {

/// Writes the number to `target`; false when the text is no number or does not fit.
template <typename Target> bool readNumber(const std::string &text, Target &target)
{
    int number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc() || end != text.data() + text.size() || number < 0) {
        return false;
    }
    target = static_cast<Target>(number);
    return true;
}

template <typename Target> bool readNumber(const std::string &text, std::optional<Target> &target)
{
    return readNumber(text, target.emplace());
}

} // namespace

std::optional<Order> parseOrder(const std::multimap<std::string, std::string> &parameters, const std::string &body,
                                std::string &problem)
{
    Order order;
    if (!body.empty()) {
        order.body = body;
    }
    for (const auto &[name, value] : parameters) {
        bool good = true;
        if (name == "empty") {
            order.body = "";
        } else if (name == "reset") {
            order.reset = true;
        } else if (name == "status") {
            good = readNumber(value, order.status);
        } else if (name == "keep") {
            good = readNumber(value, order.keep);
        } else if (name == "break") {
            good = readNumber(value, order.breaks);
        } else if (name == "rate") {
            good = readNumber(value, order.rate);
        } else if (name == "stall") {
            good = readNumber(value, order.stallSeconds);
        } else if (name == "times") {
            good = readNumber(value, order.times);
        } else {
            good = false;
        }
        if (!good) {
            problem.append("bad parameter: ").append(name).append("=").append(value);
            return std::nullopt;
        }
    }
    return order;
}

void Orders::place(const std::string &path, const Order &order)
{
    const std::lock_guard lock(m_mutex);
    m_orders[path] = order;
}

void Orders::takeBack(const std::string &path)
{
    const std::lock_guard lock(m_mutex);
    m_orders.erase(path);
}

void Orders::reset()
{
    const std::lock_guard lock(m_mutex);
    m_orders.clear();
    m_lines.clear();
    m_last.clear();
    ++m_resets;
    m_resetHappened.notify_all();
}

std::optional<Order> Orders::take(const std::string &path)
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_orders.find(path);
    if (found == m_orders.end()) {
        return std::nullopt;
    }
    const Order order = found->second;
    if (found->second.times > 0 && --found->second.times == 0) {
        m_orders.erase(found);
    }
    return order;
}

void Orders::stall(int seconds)
{
    std::unique_lock lock(m_mutex);
    const std::uint64_t before = m_resets;
    m_resetHappened.wait_for(lock, std::chrono::seconds(seconds), [&] { return m_resets != before; });
}

void Orders::record(const std::string &path, const std::string &line, const std::string &request)
{
    const std::lock_guard lock(m_mutex);
    m_lines += line + "\n";
    m_last[path] = request;
}

std::string Orders::seen() const
{
    const std::lock_guard lock(m_mutex);
    return m_lines;
}

std::optional<std::string> Orders::lastSeen(const std::string &path) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_last.find(path);
    return found == m_last.end() ? std::nullopt : std::optional(found->second);
}
