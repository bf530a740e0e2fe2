#pragma once

#include <string>
#include <unistd.h>
#include <vector>

/// What came of running a tool.
struct RunResult
{
    int status = -1; ///< exit status; 128 + signal when a signal ended it; -1 when it did not start or was too slow
    std::string output; ///< standard output
    std::string errors; ///< standard error; when status is -1, the reason in words
};

/// The whole environment of every program that a helper starts: a fixed PATH and LC_ALL=C, nothing of the caller's.
std::vector<std::string> cleanEnvironment();

/// Runs `command` (an absolute path, then its arguments) without a shell and in the clean environment, feeds it
/// `input` and waits for its end, at most `limitMs` milliseconds. It is killed when the limit passes and when the
/// calling process dies.
RunResult runToEnd(const std::vector<std::string> &command, const std::string &input = {}, int limitMs = 30000);

/// Makes the kernel send `signal` to this process when the thread that started it ends, and sends it at once if
/// `parent` is gone already. It survives becomeTool().
void dieWithParent(int signal, pid_t parent = getppid());

/// Replaces this process by `command`, with the open descriptors as they are, in the clean environment and what is
/// added to it ("NAME=VALUE"). Returns only when that failed; errno tells why.
void becomeTool(const std::vector<std::string> &command, const std::vector<std::string> &added = {});
