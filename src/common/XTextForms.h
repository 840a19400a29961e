#pragma once

#include "common/XString.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace xstd {

using XBytes = std::vector<uint8_t>;

/// "(ErrNo: %d): %s" of the runtime library's last error.
XString errnoText();
/// Between UTF-8 and wide characters. Bytes that are no UTF-8 become U+FFFD, and wide values that
/// are no character become the same.
XString wideToLocal(const std::wstring& wide);
std::wstring localToWide(const XString& text);

/// Two upper-case hexadecimal digits; three octal digits.
XString hexByte(uint8_t byte);
XString octByte(uint8_t byte);
/// The value of one hexadecimal digit; -1 for any other character.
int hexDigitValue(char c) noexcept;
/// The value of exactly two hexadecimal digits, of exactly three octal ones (the first up to 3).
/// Throw std::runtime_error: "[text] is not a hexstr!", "[text] is not a octstr!".
uint8_t hexValue(const XString& text);
uint8_t octValue(const XString& text);

/// Hexadecimal text to bytes, an optional 0x dropped, an odd length filled up in front. Stops at
/// the first character that is no digit. Reversed: the last digits make the first byte.
XBytes hexToBytes(const XString& text);
XBytes hexToBytesReversed(const XString& text);
/// Octal and binary digits, from the last one upward, into bytes with the lowest first.
XBytes octToBytes(const XString& text);
XBytes binToBytes(const XString& text);
/// Eight digits a byte, the highest bit first; two lower-case digits a byte, from the first byte or
/// from the last.
XString bytesToBin(const uint8_t* bytes, size_t count);
XString bytesToHex(const uint8_t* bytes, size_t count);
XString bytesToHexReversed(const uint8_t* bytes, size_t count);
/// The bytes as a little-endian number in octal, zero bytes at the start passed over; "0" if
/// nothing remains.
XString bytesToOct(const uint8_t* bytes, size_t count);

/// A sign, the prefix 0x, 0c or 0b, the digits without leading zeros; the prefix alone for 0.
XString int64ToHex(int64_t value);
XString int64ToOct(int64_t value);
XString int64ToBin(int64_t value);
/// The low eight bytes of the digits, 0 for an empty text.
int64_t hexToInt64(const XString& text);
int64_t octToInt64(const XString& text);
int64_t binToInt64(const XString& text);

/// A byte as it stands in a quoted text: its escape, itself from 32 up, or two hexadecimal digits.
XString escapeChar(uint8_t byte);
/// The text in double quotes with every byte of the escape table escaped.
XString escapeText(const XString& text);
/// The reverse: quotes at both ends are dropped, escapes replaced; \x takes up to two digits, \0 to
/// \3 up to three, any other character behind a backslash goes with it.
XString unescapeText(const XString& text);

/// Whether a text is well formed in the encoding.
bool isUtf8Text(const char* text);
bool isGbkText(const char* text);
/// Bytes of the character that begins with `lead`, by the high bits of `lead` alone; 1 for a byte
/// that begins none.
int utf8Length(char lead);

/// By trial division.
bool isSmallPrime(int64_t n);
/// The running program's path and folder.
XString moduleFileName();
XString moduleDir();
/// "Nan", "0", or fixed notation with that many digits behind the point.
XString doubleText(double value, int precision);

} // namespace xstd
