#pragma once

#include <QString>

/// The path of one of the program's own files. `suffix` begins with "/" (for example "/cfg/login"). What belongs to
/// the bundle lies in the folder of the running executable. What the program writes lies there too when root started
/// it, and in every other start in the person's own folder, "korvan" in the XDG data folder, which nobody else can
/// enter.
QString appPath(const QString &suffix);
QString appPath(const char *suffix);
