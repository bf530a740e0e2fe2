#pragma once

#include <optional>
#include <string>

/// Where the accounts lie: a file with one "name TAB password" line a user, and a folder with one folder a user.
struct Accounts
{
    std::string users;
    std::string profiles;
};

/// What a posted login form holds.
struct Login
{
    std::string user;
    std::string password;
};

/// Reads "username=[...]&password=[...]", where every byte but the unreserved ones (RFC 3986) is "%XX" with
/// upper-case digits. Nothing when the body differs from that form by a single byte.
std::optional<Login> parseLoginForm(const std::string &body);

/// True when the file of users, which is read anew, holds the name with this password.
bool isSubscriber(const Accounts &accounts, const Login &login);

/// The user's profile: the files of the user's folder as a ZIP archive; empty when there is none.
std::string profileArchive(const Accounts &accounts, const std::string &user);
