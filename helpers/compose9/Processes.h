#pragma once

#include "helpers/system/Descriptor.h"

#include <string>
#include <vector>

/// The processes other than this one, which lies in the bundle too, that run one of the bundle's programs now.
std::vector<Descriptor> processesOf(const std::string &bundle);

/// Waits until all these processes have ended. Returns false when one has not after `limitMs`.
bool waitForEnds(const std::vector<Descriptor> &processes, int limitMs);

/// Waits until no process runs a program of the bundle. Returns false when one still does after `limitMs`.
bool waitForEnd(const std::string &bundle, int limitMs);

/// Starts the program as the user that started this process, in this process's environment. Returns its process id,
/// or -1.
int startProgram(const std::string &path);

/// Watches a started program for `watchMs`: an empty text when it still runs then, or ended with status 0 before,
/// else how it ended.
std::string watch(int pid, int watchMs);
