#pragma once

#include <QStringList>

/// The user's login items: the key "AutoLaunchedApplicationDictionary" of the preference domain "loginwindow", read
/// and written with the "defaults" tool. An item is the text of one "{...}" dictionary of that array. A missing or
/// failing tool reads as an empty list and writes nothing; each wait, for the start and for the end, is limited to 30
/// s.

/// Appends the stored items to `items`.
void machelpReadLaunch(QStringList &items);

/// Replaces the stored items.
void machelpWriteLaunch(QStringList &items);

/// Adds an item for the application bundle at `path` (also where there is one already), or removes the first item
/// that holds `path`. Returns 1 after writing, or -1 without doing anything when `reserved` is not null.
int machelpLaunchStartup(const char *path, int add, const void *reserved);
