#pragma once

#include <QString>

/// Unpacks a ZIP archive into "/cfg/OpenVPN/" with compose7 from the application folder. Waits in a local event loop,
/// without a limit. Returns false only when the tool is missing; what it could not unpack is one log line. `problem`
/// becomes why not all of it was unpacked, in the tool's words; empty when all was.
bool UncompressFile(QString archive, QString *problem = nullptr);

/// Unpacks an archive into a folder with the tool that the end of its name asks for, in this letter case: ".zip" is
/// compose7's, ".7z" compose6's. Waits like UncompressFile(). Returns false when the tool is missing or the name ends
/// otherwise.
bool Uncompress(QString archive, QString destination);

/// As Uncompress(), with the tool chosen by what `type` contains: "7z", "zip" or both, in that order.
void UncompressEx(QString archive, QString destination, QString type);
