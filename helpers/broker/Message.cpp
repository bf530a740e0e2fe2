#include "helpers/broker/Message.h"

#include <cerrno>
#include <cstring>
#include <sys/socket.h>

namespace {

constexpr size_t kMostDescriptors = 8;

/// Takes over all descriptors that the kernel has put into this process, wanted or not.
std::vector<Descriptor> descriptorsOf(msghdr &header)
{
    std::vector<Descriptor> descriptors;
    for (cmsghdr *part = CMSG_FIRSTHDR(&header); part != nullptr; part = CMSG_NXTHDR(&header, part)) {
        if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_RIGHTS) {
            continue;
        }
        for (size_t at = 0; at + sizeof(int) <= part->cmsg_len - CMSG_LEN(0); at += sizeof(int)) {
            int fd = -1;
            std::memcpy(&fd, CMSG_DATA(part) + at, sizeof fd);
            descriptors.emplace_back(fd);
        }
    }
    return descriptors;
}

} // namespace

Message receiveMessage(int socket, size_t limit, size_t mostDescriptors)
{
    Message message;
    message.text.resize(limit);
    iovec bytes = {message.text.data(), message.text.size()};
    alignas(cmsghdr) char control[CMSG_SPACE(kMostDescriptors * sizeof(int))];
    msghdr header = {};
    header.msg_iov = &bytes;
    header.msg_iovlen = 1;
    header.msg_control = control;
    header.msg_controllen = sizeof control;
    const ssize_t length = recvmsg(socket, &header, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
    if (length < 0 && (errno == EAGAIN || errno == EINTR)) {
        return {};
    }
    if (length <= 0) { // an empty message looks like the end, and is as good as one
        return {Message::State::End, {}, {}};
    }
    message.descriptors = descriptorsOf(header);
    if ((header.msg_flags & (MSG_TRUNC | MSG_CTRUNC)) != 0 || message.descriptors.size() > mostDescriptors) {
        return {Message::State::Refused, {}, {}};
    }
    message.text.resize(static_cast<size_t>(length));
    message.state = Message::State::Whole;
    return message;
}

void sendMessage(int socket, const std::string &text)
{
    send(socket, text.data(), text.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
}
