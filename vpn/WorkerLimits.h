#pragma once

/// How long the worker waits for output at a time; it looks for a cancel in between. Milliseconds, as all of these.
constexpr int kPollMs = 50;
/// How long a helper may take to start, and a stop command to finish.
constexpr int kHelperLimitMs = 30000;
/// How long a killed helper may take to be gone.
constexpr int kKillLimitMs = 1000;
