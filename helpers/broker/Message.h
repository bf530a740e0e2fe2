#pragma once

#include "helpers/system/Descriptor.h"

#include <string>
#include <vector>

/// One message of a SOCK_SEQPACKET socket.
struct Message
{
    enum class State {
        None,    ///< nothing is waiting
        End,     ///< nobody is at the other end any more
        Whole,   ///< `text` and `descriptors` are all that was sent
        Refused, ///< it was longer than `limit`, or brought more descriptors than were allowed; all of it is gone
    };
    State state = State::None;
    std::string text;
    std::vector<Descriptor> descriptors;
};

/// Takes the next message without waiting for one. It may hold up to `limit` bytes and `mostDescriptors` descriptors,
/// which are closed when a program is started.
Message receiveMessage(int socket, size_t limit, size_t mostDescriptors);

/// Sends one message without waiting; one that can not be delivered is lost.
void sendMessage(int socket, const std::string &text);
