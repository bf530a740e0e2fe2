#pragma once

#include <QString>

/// The scrambler's key: 16 printable characters and a terminating zero.
extern char ENCODE_KEY[17];

/// The MD5 digest (RFC 1321) of the text's local 8-bit form as 32 lower-case hexadecimal characters.
QString md5(const QString &text);

/// Scrambles a zero-terminated byte string into printable characters, two a byte: XOR with the key, then a
/// substitution table. It keeps casual readers from seeing a stored password and is no encryption. `output` must hold
/// twice the input's length and a terminating zero. Returns the number of characters written, or -2 when the key's
/// length is not 16.
int simple_encode(const char *input, char *output);

/// Reverses simple_encode(). `output` must hold half the input's length; no terminating zero is written. A pair of
/// characters that is no code decodes to the key character at its position. Returns the key position after the last
/// byte (not the number of bytes), -3 when the key's length is not 16, or -4 when the input's length is odd.
int simple_decode(const char *input, char *output);
