#include "helpers/system/User.h"

#include "helpers/system/Checks.h"

#include <cstdlib>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>

static std::optional<User> userOf(const passwd *entry)
{
    return entry == nullptr ? std::nullopt
                            : std::optional(User{entry->pw_uid, entry->pw_gid, entry->pw_name, entry->pw_dir});
}

std::optional<User> userById(uid_t uid)
{
    return userOf(getpwuid(uid));
}

std::optional<User> userNamed(const std::string &name)
{
    return userOf(getpwnam(name.c_str()));
}

std::optional<User> userAtTheDesktop()
{
    if (getuid() != 0) {
        return userById(getuid());
    }
    for (const char *name : {"SUDO_UID", "PKEXEC_UID"}) {
        const char *number = std::getenv(name);
        if (number != nullptr && isNumber(number)) {
            return userById(static_cast<uid_t>(std::strtoul(number, nullptr, 10)));
        }
    }
    const char *user = std::getenv("USER");
    return user != nullptr && *user != '\0' ? userNamed(user) : userById(0);
}

bool becomeUser(const User &user)
{
    if (geteuid() == 0 && initgroups(user.name.c_str(), user.gid) != 0) {
        return false;
    }
    return setresgid(user.gid, user.gid, user.gid) == 0 && setresuid(user.uid, user.uid, user.uid) == 0;
}
