#pragma once

#include <optional>
#include <string>
#include <sys/types.h>

/// An account of this machine.
struct User
{
    uid_t uid = 0;
    gid_t gid = 0;
    std::string name;
    std::string home;
};

/// The account with this number; no value when there is none.
std::optional<User> userById(uid_t uid);
