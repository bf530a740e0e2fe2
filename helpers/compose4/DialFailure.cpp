#include "helpers/compose4/DialFailure.h"

#include "helpers/system/Run.h"

struct Sign
{
    const char *text;
    const char *reason;
};

// The first that is found counts: a server that refuses the password has answered, and so on.
static const Sign kSigns[] = {
    {"CHAP authentication failed", "691 the user name or password is not valid"},
    {"PAP authentication failed", "691 the user name or password is not valid"},
    {"invalid HASH_V1 payload length", "the pre-shared key is not the one of the server"},
    {"calculated HASH does not match", "the pre-shared key is not the one of the server"},
    {"look up L2TP VPN gateway", "the name of the server is not known, check the connection to the Internet"},
    {"sending retransmit", "the server does not answer"},
    {"Maximum retries exceeded", "the server does not answer"},
};

std::string dialFailure(const std::string &journal)
{
    for (const Sign &sign : kSigns) {
        if (journal.find(sign.text) != std::string::npos) {
            return sign.reason;
        }
    }
    return {};
}

std::string dialJournal(time_t since)
{
    // What anybody may write there under such a name does not count, only what root's processes of that unit wrote.
    return runToEnd({"/usr/bin/journalctl", "--quiet", "--no-pager", "--output=cat",
                     "--since=@" + std::to_string(since), "_UID=0", "_SYSTEMD_UNIT=NetworkManager.service",
                     "_SYSTEMD_UNIT=strongswan-starter.service"},
                    {}, 5000)
        .output;
}
