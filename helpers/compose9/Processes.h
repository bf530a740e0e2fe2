#pragma once

#include "helpers/system/Descriptor.h"

#include <string>
#include <vector>

/// A process that runs a program of the bundle.
struct Running
{
    std::string link;    ///< of its executable, below /proc
    std::string program; ///< where that link leads
    Descriptor process;
};

/// The processes other than this one, which lies in the bundle too, that run one of the bundle's programs now as one
/// of these users.
std::vector<Running> processesOf(const std::string &bundle, const std::vector<uid_t> &users);

/// Waits until all these processes have ended, or have become another program. Returns false when one has not after
/// `limitMs`.
bool waitForEnds(const std::vector<Running> &processes, int limitMs);

/// Waits until no process of the user runs a program of the bundle. Returns false when one still does after
/// `limitMs`.
bool waitForEnd(const std::string &bundle, uid_t user, int limitMs);

/// Starts the program as the user that started this process, in this process's environment. Returns its process id,
/// or -1.
int startProgram(const std::string &path);

/// Watches a started program for `watchMs`: an empty text when it still runs then, or ended with status 0 before,
/// else how it ended.
std::string watch(int pid, int watchMs);
