#include "helpers/compose/LockedDown.h"

#include "helpers/system/Checks.h"
#include "helpers/system/Journal.h"
#include "names/Names.h"

#include <cstdlib>
#include <cstring>
#include <linux/rtnetlink.h>
#include <netdb.h>
#include <sstream>
#include <sys/socket.h>
#include <unistd.h>

namespace {

struct DefaultRoutes
{
    bool inMainTable = false;
    bool inTunnelTable = false;
};

unsigned tableOf(const nlmsghdr *header, const rtmsg *route)
{
    int length = static_cast<int>(RTM_PAYLOAD(header));
    for (const rtattr *attribute = RTM_RTA(route); RTA_OK(attribute, length);
         attribute = RTA_NEXT(attribute, length)) {
        if (attribute->rta_type == RTA_TABLE) {
            unsigned table = 0;
            std::memcpy(&table, RTA_DATA(attribute), sizeof(table));
            return table;
        }
    }
    return route->rtm_table;
}

/// Reads one piece of the dump. False at its end.
bool takeRoutes(const char *bytes, size_t length, DefaultRoutes &found)
{
    const auto *header = reinterpret_cast<const nlmsghdr *>(bytes);
    for (; NLMSG_OK(header, length); header = NLMSG_NEXT(header, length)) {
        if (header->nlmsg_type == NLMSG_DONE || header->nlmsg_type == NLMSG_ERROR) {
            return false;
        }
        const auto *route = static_cast<const rtmsg *>(NLMSG_DATA(header));
        if (header->nlmsg_type != RTM_NEWROUTE || route->rtm_dst_len != 0 || route->rtm_type != RTN_UNICAST) {
            continue;
        }
        const unsigned table = tableOf(header, route);
        found.inMainTable = found.inMainTable || table == RT_TABLE_MAIN;
        found.inTunnelTable = found.inTunnelTable || table == kTunnelTable;
    }
    return true;
}

DefaultRoutes defaultRoutes()
{
    DefaultRoutes found;
    const int channel = socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE);
    if (channel < 0) {
        return found;
    }
    struct
    {
        nlmsghdr header;
        rtmsg route;
    } request = {};
    request.header.nlmsg_len = sizeof(request);
    request.header.nlmsg_type = RTM_GETROUTE;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.route.rtm_family = AF_INET;
    if (send(channel, &request, sizeof(request), 0) == static_cast<ssize_t>(sizeof(request))) {
        alignas(nlmsghdr) char bytes[32768];
        ssize_t length = 0;
        do {
            length = recv(channel, bytes, sizeof(bytes), 0);
        } while (length > 0 && takeRoutes(bytes, static_cast<size_t>(length), found));
    }
    close(channel);
    return found;
}

} // namespace

bool isLockedDown()
{
    const DefaultRoutes routes = defaultRoutes();
    return !routes.inMainTable && routes.inTunnelTable;
}

Addresses parseAddresses(const std::string &text)
{
    Addresses addresses;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string name;
        std::string address;
        if (words >> name >> address && (isIpv4(address) || isIpv6(address))) {
            addresses[name] = address;
        }
    }
    return addresses;
}

Addresses lastAddresses()
{
    return parseAddresses(readJournal(kLastRemote).text);
}

bool canBeResolved(const std::string &name)
{
    setenv("RES_OPTIONS", "timeout:1 attempts:1", 1);
    addrinfo hints = {};
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo *results = nullptr;
    if (getaddrinfo(name.c_str(), nullptr, &hints, &results) != 0) {
        return false;
    }
    freeaddrinfo(results);
    return true;
}

std::vector<std::string> replaceNames(std::vector<Directive> &directives, const Addresses &addresses,
                                      bool (*resolves)(const std::string &name))
{
    std::vector<std::string> notes;
    for (Directive &directive : directives) {
        const auto inner = replaceNames(directive.inner, addresses, resolves);
        notes.insert(notes.end(), inner.begin(), inner.end());
        if (directive.name() != "remote" || directive.words.size() < 2) {
            continue;
        }
        std::string &name = directive.words[1];
        const auto known = addresses.find(name);
        if (known == addresses.end() || resolves(name)) {
            continue;
        }
        notes.push_back(atLine(directive.line, name + " can not be resolved, its last address is used"));
        name = known->second;
    }
    return notes;
}
