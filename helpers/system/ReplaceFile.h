#pragma once

#include <string>
#include <sys/types.h>

/// Replaces a file in one step: whoever opens it finds the old content or the new one whole, which is on disk before
/// this returns. What stood under the name, a link too, is gone. `path` is relative to the open folder `folder`,
/// which may be AT_FDCWD. False, with errno set, on a failure; the file is then as it was.
bool replaceFile(int folder, const std::string &path, const std::string &text, mode_t mode = 0600);
