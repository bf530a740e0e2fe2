#pragma once

#include <string>
#include <vector>

/// The arguments of a program that may be given secrets, without its name. Every user of the machine can read the
/// command line of every process. So with "-" as the only argument they are read from standard input, each ended by a
/// NUL; where they do stand on the command line, the program starts itself anew in that way before it does anything
/// else. Leaves nothing to read on standard input. No arguments at all when that failed.
std::vector<std::string> takeArguments(int argc, char *argv[]);
