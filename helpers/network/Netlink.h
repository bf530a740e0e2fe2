#pragma once

#include <memory>
#include <netlink/msg.h>
#include <netlink/netlink.h>

using Socket = std::unique_ptr<nl_sock, decltype(&nl_socket_free)>;

/// A socket on which the kernel answers the messages of a protocol, as NETLINK_ROUTE.
inline Socket openSocket(int protocol)
{
    Socket socket(nl_socket_alloc(), nl_socket_free);
    nl_connect(socket.get(), protocol);
    return socket;
}

/// A message with the header of its family, to which attributes can be added; the caller owns it.
template <typename Header> nl_msg *newMessage(int type, int flags, Header header)
{
    nl_msg *message = nlmsg_alloc_simple(type, flags);
    nlmsg_append(message, &header, sizeof header, NLMSG_ALIGNTO);
    return message;
}
