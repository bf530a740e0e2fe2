#pragma once

#include <QByteArray>
#include <QString>

/// What the script prints on standard output, run by bash in the folder with this standard input. The test ends
/// when the script has not ended after 90 seconds. Nothing else happens in the program meanwhile.
QByteArray runShell(const QString &folder, const QString &script, const QByteArray &input = {});
