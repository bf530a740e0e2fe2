#pragma once

#include <cstdint>
#include <libmnl/libmnl.h>
#include <optional>
#include <string>
#include <vector>

/// One message to the kernel and its answer. Negative errno values tell what failed.
class NetlinkRequest
{
public:
    /// `flags` beside NLM_F_REQUEST; `header` is the family's own, of `size` bytes.
    NetlinkRequest(unsigned type, unsigned flags, const void *header, size_t size);

    void add(unsigned attribute, uint32_t value) { mnl_attr_put_u32(message(), uint16_t(attribute), value); }
    void add(unsigned attribute, const std::string &bytes)
    {
        mnl_attr_put(message(), uint16_t(attribute), bytes.size(), bytes.data());
    }

    /// Appends attributes as they are.
    void addRaw(const std::string &attributes);

    /// Sends it over rtnetlink and waits for the acknowledgement. 0 or a negative errno value.
    int send();

    /// Sends it and hands every answer of a dump to `take`.
    int dump(mnl_cb_t take, void *data, int bus = NETLINK_ROUTE);

private:
    nlmsghdr *message() { return reinterpret_cast<nlmsghdr *>(m_bytes.data()); }

    std::vector<char> m_bytes;
};

/// Calls `take` with each attribute of these bytes, of a message behind its family's header, or of an attribute.
template <typename Take> void eachAttribute(const void *bytes, size_t length, Take take)
{
    auto left = int(length);
    for (const auto *attribute = static_cast<const nlattr *>(bytes); mnl_attr_ok(attribute, left);
         attribute = mnl_attr_next(attribute)) {
        take(attribute);
        left -= MNL_ALIGN(attribute->nla_len);
    }
}
template <typename Take> void eachAttribute(const nlmsghdr *message, size_t header, Take take)
{
    eachAttribute(mnl_nlmsg_get_payload_offset(message, header),
                  mnl_nlmsg_get_payload_len(message) - MNL_ALIGN(header), take);
}
template <typename Take> void eachAttribute(const nlattr *outer, Take take)
{
    eachAttribute(mnl_attr_get_payload(outer), mnl_attr_get_payload_len(outer), take);
}

/// What an attribute holds.
std::string bytesOf(const nlattr *attribute);

/// A route as the kernel tells it.
struct Route
{
    uint8_t family = 0;
    uint8_t prefix = 0;   ///< the destination's length in bits
    uint8_t type = 0;     ///< RTN_UNICAST ...
    uint8_t protocol = 0; ///< who made it, RTPROT_DHCP ...
    unsigned table = 0;
    unsigned metric = 0;
    std::string destination;     ///< the address' bytes; empty for 0
    std::string gateway;         ///< the address' bytes; empty without one
    std::vector<unsigned> links; ///< interfaces, several when it spreads over several uplinks
    std::string message;         ///< header and attributes without table and state, as the kernel takes it back

    bool isDefault() const;
    bool operator==(const Route &other) const { return message == other.message; }
};

/// The routes of one table, in the kernel's order.
std::vector<Route> routesOf(uint8_t family, unsigned table);

/// A route to make: "192.0.2.0" and 24, through a gateway that may be empty; without a protocol one to delete,
/// whoever made it.
Route routeTo(const std::string &destination, uint8_t prefix, const std::string &gateway, uint8_t protocol,
              unsigned metric = 0);

/// The route of a message that was kept as text. No value when it is none.
std::optional<Route> readRoute(const std::string &message);

enum class RouteChange { Add, Append, Replace, Delete };

/// Changes one route of a table. 0 or a negative errno value.
int changeRoute(RouteChange change, const Route &route, unsigned table);

/// Makes or removes the rules that send packets with kTunnelMark on a way of their own: as the main table says, but
/// never into an interface of kTunnelGroup; where that leads nowhere, as kTunnelTable says.
void changeMarkRules(uint8_t family, bool wanted);

/// Puts an interface into kTunnelGroup. 0 or a negative errno value.
int joinTunnelGroup(unsigned link);

/// The numbers of all interfaces.
std::vector<unsigned> allLinks();
