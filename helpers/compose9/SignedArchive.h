#pragma once

#include <string>

/// An update archive that was read and checked; nothing that happens to the file afterwards changes it.
struct SignedArchive
{
    std::string bytes;
    std::string version; ///< that its signature vouches for
    std::string reason;  ///< why it is not accepted; empty when it is
};

/// Whether updates of the program in the folder, which ends with "/", have to be signed.
bool needsSignature(const std::string &folder);

/// Reads an archive from standard input and checks it with this signature, minisign's lines, as readSigned() does.
SignedArchive readGiven(const std::string &signature, const std::string &folder);

/// Reads an archive and its signature, both plain files, and checks them: signed by a key of the folder, for this
/// program, and not older than the one there.
SignedArchive readSigned(const std::string &archive, const std::string &signature, const std::string &folder);

/// Unpacks exactly these bytes into the folder with the archive tool of the bundle. Returns the reason of a failure,
/// or an empty text.
std::string unpackSigned(const SignedArchive &archive, const std::string &tool, const std::string &folder);
