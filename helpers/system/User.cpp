#include "helpers/system/User.h"

#include <pwd.h>

std::optional<User> userById(uid_t uid)
{
    const passwd *entry = getpwuid(uid);
    return entry == nullptr ? std::nullopt
                            : std::optional(User{entry->pw_uid, entry->pw_gid, entry->pw_name, entry->pw_dir});
}
