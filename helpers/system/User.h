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

/// The account with this number or name; no value when there is none.
std::optional<User> userById(uid_t uid);
std::optional<User> userNamed(const std::string &name);

/// The account from which all this was started. Where even the real user is root, whoever became root by the usual
/// ways (SUDO_UID, PKEXEC_UID) says who it was, and the program itself leaves it in USER.
std::optional<User> userAtTheDesktop();

/// Gives up all rights but that user's for good. False when that failed; the process must end then.
bool becomeUser(const User &user);
