#pragma once

/// Environment variable in which the start-up tells compose9 the one argument that the program was started with,
/// where it was one: after the update the program is started with it again.
constexpr char kRestartArgument[] = "KORVAN_RESTART_ARGUMENT";
