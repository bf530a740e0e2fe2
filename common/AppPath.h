#pragma once

#include <QString>

/// The path of one of the program's own files: the folder of the running executable followed by `suffix`, which
/// begins with "/" (for example "/cfg/login").
QString appPath(const QString &suffix);
QString appPath(const char *suffix);
