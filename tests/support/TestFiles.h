#pragma once

#include <QByteArray>
#include <QString>

/// Creates the file (with the folders above it) or replaces it; the test fails when that can not be done.
void putFile(const QString &path, const QByteArray &bytes);

/// Creates an executable shell script with this body, which begins after the "#!" line.
void putScript(const QString &path, const QByteArray &body);

/// The whole file, or an empty array when it can not be read.
QByteArray fileBytes(const QString &path);

/// Lab tests start their main() with this: without root and TUN the whole test is reported as skipped, loudly, and
/// the caller returns the given exit status 0.
bool canUseLab();
