#pragma once

#include "common/XString.h"

#include <cstdint>
#include <vector>

namespace xstd {

/// Bytes as a number in radix 58, by the alphabet that leaves out 0, O, I and l (S. Sridharan and
/// others, "The Base58 Encoding Scheme", 2021). Each leading zero byte is one leading "1". The time
/// grows with the square of the length; a long text can be stopped through XStop.
XString encodeBase58(const uint8_t* first, const uint8_t* last);

/// The bytes of such a text, which ends at its first NUL and may stand between blanks. Gives false
/// for any other character and leaves `out` as it was.
bool decodeBase58(const XString& text, std::vector<uint8_t>& out);

/// Appends the low four bytes of the bytes' FNV-1a hash of 64 bits, lowest first.
void appendChecksum(std::vector<uint8_t>& bytes);
/// Takes them off again. False, and the bytes as they were, where they are too few or the hash is
/// another.
bool takeChecksum(std::vector<uint8_t>& bytes);

/// The bytes and, behind them, the low four bytes of their FNV-1a hash of 64 bits, lowest first, in
/// radix 58.
XString encodeBase58Check(const std::vector<uint8_t>& bytes);

/// The bytes of such a text without the four of the hash. Gives false and an empty `out` for a text
/// that decodeBase58 refuses, that is too short, or whose hash is not that of its bytes.
bool decodeBase58Check(const XString& text, std::vector<uint8_t>& out);

} // namespace xstd
