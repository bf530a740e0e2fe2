#pragma once

#include <optional>
#include <sys/types.h>
#include <vector>

/// The user for whom this process works, where that is not the one it runs as.
std::optional<uid_t> personWorkedFor();

/// While it lives, this process opens files with the rights of the user for whom it works, and no others: what that
/// user has put a link to, or may not read, root does not read either. Changes nothing in a process that works for
/// the user it runs as.
class PersonsRights
{
public:
    PersonsRights();
    ~PersonsRights();
    PersonsRights(const PersonsRights &) = delete;
    PersonsRights &operator=(const PersonsRights &) = delete;

    /// Whether this process works for somebody else than the user it runs as.
    static bool areOthers();

    /// False when the rights could not be taken; nothing may be opened then.
    bool held() const { return m_held; }

private:
    bool m_held = true;
    bool m_taken = false;
    std::vector<gid_t> m_groups; ///< this process' own
};
