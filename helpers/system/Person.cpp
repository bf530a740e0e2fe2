#include "helpers/system/Person.h"

#include "helpers/system/Checks.h"
#include "helpers/system/User.h"
#include "names/Names.h"

#include <cstdlib>
#include <grp.h>
#include <unistd.h>

std::optional<uid_t> personWorkedFor()
{
    const char *number = std::getenv(kPersonVariable);
    const bool isUser = number != nullptr && isNumber(number);
    return isUser ? std::optional(static_cast<uid_t>(std::strtoul(number, nullptr, 10))) : std::nullopt;
}

bool PersonsRights::areOthers()
{
    return std::getenv(kPersonVariable) != nullptr;
}

PersonsRights::PersonsRights()
{
    if (!areOthers()) {
        return;
    }
    const std::optional<uid_t> person = personWorkedFor();
    const auto user = person ? userById(*person) : std::nullopt;
    const int count = getgroups(0, nullptr);
    m_groups.resize(count > 0 ? static_cast<size_t>(count) : 0);
    m_taken = user && getgroups(count, m_groups.data()) == count;
    m_held = m_taken && initgroups(user->name.c_str(), user->gid) == 0 && setegid(user->gid) == 0 &&
             seteuid(user->uid) == 0;
}

PersonsRights::~PersonsRights()
{
    if (m_taken && (seteuid(0) != 0 || setegid(0) != 0 || setgroups(m_groups.size(), m_groups.data()) != 0)) {
        std::abort();
    }
}
