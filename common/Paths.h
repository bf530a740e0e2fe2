#pragma once

#include <QString>

/// The path with every "\" turned into "/" and every "/.." step collapsed together with the name before it. The
/// search is for "/.." anywhere, so a name such as "/..hidden" counts as a step too. A path without a name to
/// collapse is returned with its slashes turned and nothing collapsed.
QString QDir_clearPath(QString path);

/// Deletes a folder and all it holds with "rm -rf", waiting at most 30 s. Always true; the outcome is not examined.
bool QDir_removeFolder(const QString &path);

/// Deletes the files of a folder, whose path must end with "/". Hidden files, and entries whose name holds "custom"
/// in any letter case, stay. True when every removal that was tried succeeded; a sub-folder can not be removed this
/// way and makes it false.
bool ClearPath(const QString &folder);
