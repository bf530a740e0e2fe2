#pragma once

#include <QString>

/// Scrambles a text of up to 255 bytes in the local 8-bit encoding into printable ASCII, two characters a byte. A
/// longer text gives an empty result and one log line.
QString encode(QString plain);

/// Reverses encode(). A text that encode() can not have made, of odd length or longer than 510 characters, decodes to
/// an empty one.
QString decode(QString scrambled);

/// A remembered user.
struct SavedLogin
{
    QString user;
    QString password;
};

/// The path of the file that keeps the login.
QString savedLoginPath();

/// Keeps the login in "/cfg/login", scrambled and readable by the owner only. A login too long for encode() is not
/// kept, and what was kept before stays.
void writeSavedLogin(const SavedLogin &login);

/// The login in "/cfg/login"; both texts are empty when it can not be read, and a damaged file gives what is whole.
SavedLogin readSavedLogin();
