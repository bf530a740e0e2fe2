#pragma once

#include "helpers/system/Descriptor.h"

#include <string>

/// What is in a journal file.
struct JournalText
{
    enum class State {
        Missing, ///< there is no such file
        Read,    ///< `text` is its content
        Refused, ///< it is a link, somebody else's or unreadable; `reason` tells
    };
    State state = State::Missing;
    std::string text;
    std::string reason;
};

/// Reads a file of kJournalFolder. Neither the folder nor the file may be a link, and both must belong to the
/// effective user and be writable by nobody else.
JournalText readJournal(const std::string &name);

/// Replaces a file of kJournalFolder in one step, on disk before it returns, mode 0600; the folder is made with mode
/// 0700 when it is missing. Returns the reason of a failure, or an empty text.
std::string writeJournal(const std::string &name, const std::string &text);

/// Removes a file of kJournalFolder; a missing one is no failure. Returns the reason of a failure, or an empty text.
std::string removeJournal(const std::string &name);

/// While it lives, no other process holds the lock of that name in kJournalFolder. The wait for it, if there is to be
/// one, has no limit: its holder's end frees it.
class JournalLock
{
public:
    explicit JournalLock(const std::string &name, bool waits = true);

    /// False when somebody else holds it, or the folder or the file is not as it must be; nothing is locked then.
    bool held() const { return m_file >= 0; }

private:
    Descriptor m_file;
};
