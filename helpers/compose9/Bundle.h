#pragma once

#include <string>

/// Where a bundle keeps its programs and its state, below the bundle's folder.
constexpr char kMacOs[] = "/Contents/MacOS/";

/// The version of the program in a folder, which ends with "/", as its version file has it, or an empty text.
std::string versionIn(const std::string &folder);

/// The bundle's version likewise.
std::string bundleVersion(const std::string &bundle);

/// Checks that a new bundle is whole and harmless: the program and its helpers are there and executable, the version
/// is told, and there are only files and folders, no links. Returns the reason why it is not, or an empty text.
std::string checkBundle(const std::string &bundle, const std::string &program);

/// Copies the user's state from the old bundle to the new one, with owners and modes. Returns the reason of a
/// failure, or an empty text.
std::string carryStateOver(const std::string &oldBundle, const std::string &newBundle);

/// Gives the new bundle's files the old bundle's owner, the modes of an installed program and, to the program itself,
/// the owner and mode of the old one, its set-user-id bit included. Comes before carryStateOver(). Returns the reason
/// of a failure, or an empty text.
std::string adoptOwnerAndModes(const std::string &oldBundle, const std::string &newBundle,
                               const std::string &program);
