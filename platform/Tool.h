#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// What came of running a command-line tool.
struct ToolResult
{
    bool started = false;  ///< false: no such program, or the wait for its start ran out
    bool finished = false; ///< false: it still ran when the limit passed, and was killed
    int exitCode = -1;     ///< valid when finished
    QByteArray output;     ///< standard output, as far as it came
    QByteArray errors;     ///< standard error, likewise
};

/// How long a tool may take to start and then to finish, in milliseconds, where a caller states no other limit.
constexpr int kToolLimitMs = 30000;

/// The environment for every child process: the program's own, with LC_ALL=C so that output is in English.
QProcessEnvironment childEnvironment();

/// Runs a tool, found by name along PATH, without a shell, and reads its standard output. Blocks the calling thread.
ToolResult runTool(const QString &program, const QStringList &arguments, int finishLimitMs = kToolLimitMs);

/// As runTool(), but waits for the end in a local event loop, so that the window stays alive. Without a limit unless
/// `finishLimitMs` is 0 or more; without one, a tool at work when the program is told to quit gets kToolLimitMs to
/// finish, so that nothing is left half done.
ToolResult runToolInEventLoop(const QString &program, const QStringList &arguments, int finishLimitMs = -1);
