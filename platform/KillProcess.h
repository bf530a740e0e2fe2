#pragma once

#include <QString>

/// Ends every process whose line in "ps -ef" holds `name`, with a shell pipeline. For use from a debugger or a
/// support build: the program itself never calls it, because the name is not quoted and may match more than is meant.
void killProcessByName(const QString &name);
