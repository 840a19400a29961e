#pragma once

#include "common/XString.h"
#include "numbers/limbs.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace huge {

/// Appends words or limbs to bytes, each with its least significant byte first.
void appendWord(std::vector<uint8_t>& bytes, uint64_t word);
void appendLimbs(std::vector<uint8_t>& bytes, const Limb* limbs, size_t count);

/// Hexadecimal text that begins with 0x, with no more than the last 2 * bytes characters behind it;
/// bytes of 0 and below keep all.
xstd::XString lastHexDigits(xstd::XString text, int64_t bytes);

/// Base58 and Base64 text of bytes.
xstd::XString baseText(int radix, const uint8_t* bytes, size_t count);

} // namespace huge
