#pragma once

#include <string>

/// What a signature vouches for.
struct SignedUpdate
{
    std::string version; ///< of the signed trusted comment
    std::string reason;  ///< why the signature is not accepted; empty when it is
};

/// Checks a signature in minisign's format, four lines, over the archive's bytes: made by one of the keys, which are
/// minisign's lines with blanks or line ends between them, of the form that hashes first, and with the trusted
/// comment "Korvan VERSION".
SignedUpdate checkSignature(const std::string &keys, const std::string &archive, const std::string &signature);

/// Whether a version, numbers with dots between them, is older than the other one. A number that is missing counts
/// as 0, and letters do not count.
bool isOlder(const std::string &version, const std::string &other);
