#pragma once

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// How a page is to be answered instead of plainly. The fields work together.
struct Order
{
    std::optional<std::string> body;   ///< these bytes in place of the page's own
    std::optional<int> status;         ///< this HTTP status
    std::optional<std::size_t> keep;   ///< only the first bytes of the body, as if they were all
    std::optional<std::size_t> breaks; ///< the whole length announced, the connection closed after these bytes
    std::uint64_t rate = 0;            ///< at most so many bytes a second; 0: as fast as it goes
    int stallSeconds = 0;              ///< silence before the first byte
    bool reset = false;                ///< the TCP connection is reset once the request was read
    int times = 0;                     ///< for so many requests only; 0: until the order is taken back
};

/// Reads the parameters of a control request; an empty body orders no body, unless "empty" is given. Returns nothing,
/// with the reason in `problem`, when one is unknown or its value is no number.
std::optional<Order> parseOrder(const std::multimap<std::string, std::string> &parameters, const std::string &body,
                                std::string &problem);

/// The orders for all pages by path ("/api"), and the requests that were seen. All functions may be called from any
/// thread.
class Orders
{
public:
    void place(const std::string &path, const Order &order);
    void takeBack(const std::string &path);

    /// Forgets all orders and requests, and ends all stalls.
    void reset();

    /// The order that holds for a request that has just come in, which uses up one of its times.
    std::optional<Order> take(const std::string &path);

    /// Blocks for so many seconds, or until reset().
    void stall(int seconds);

    /// Keeps a request: a line for the list, and its bytes as the last ones of its path.
    void record(const std::string &path, const std::string &line, const std::string &request);

    /// The lines of all requests so far, in order of arrival.
    std::string seen() const;

    /// The last request to the path.
    std::optional<std::string> lastSeen(const std::string &path) const;

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_resetHappened;
    std::uint64_t m_resets = 0;
    std::map<std::string, Order> m_orders;
    std::string m_lines;
    std::map<std::string, std::string> m_last;
};
