#pragma once

#include <QString>
#include <QStringList>

/// The value of a key of "/setting.ini" (INI format, "SECTION/ENTRY"), as text; empty when the file, the section or
/// the key is missing. The file is read anew at every call, so an edit takes effect without a restart, and never
/// written.
QString getSetting(const QString &key);

/// Its words likewise, which blanks or commas separate.
QStringList getSettingWords(const QString &key);
