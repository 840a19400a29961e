#pragma once

#include "numbers/limbs.h"

#include <cstddef>
#include <string>

namespace huge {

/// The value of one digit in any radix up to 16, letters in either case; 255 for anything else.
uint8_t digitValue(char digit) noexcept;

/// Puts the digits of text from begin on, each of width bits, into limbs from the low end up; the
/// limbs are cleared on entry and have room for every bit.
void packDigits(const std::string& text, size_t begin, unsigned width, Limb* limbs) noexcept;

/// The lowest bits bits as digits of width bits each, the highest first, in upper case.
std::string unpackDigits(const Limb* limbs, size_t n, size_t bits, unsigned width);

} // namespace huge
