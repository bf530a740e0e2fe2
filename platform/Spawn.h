#pragma once

#include "platform/Tool.h"

#include <array>

/// The file descriptors that become a process' standard input, output and errors; where it is -1, it keeps this
/// process'.
using Streams = std::array<int, 3>;

/// Starts a program with its arguments, found along PATH where its name holds no slash. This process' memory is not
/// copied for that, as fork() and QProcess do, which takes longer than the whole start of a small tool. Returns the
/// process' number, whose end is the caller's to wait for, or -1 with errno set.
pid_t spawnProcess(const QStringList &command, const QStringList &environment, const Streams &streams);

/// What a tool prints, as far as it came within `limitMs`; it is killed then. Blocks the calling thread. Nothing when
/// it could not be started.
QByteArray toolOutput(const QString &program, const QStringList &arguments, int limitMs);
