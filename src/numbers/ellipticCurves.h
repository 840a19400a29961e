#pragma once

#include "numbers/HugeInteger.h"

#include <cstddef>

namespace huge {

/// A factor of n that is neither 1 nor n, by elliptic curves. n is odd, composite, no power of a
/// number and without small factors. The time grows with the size of the smallest factor: some
/// tenths of a second for 19 digits, half a minute or more for 27.
HugeInteger curveFactor(const HugeInteger& n);
/// The same, but 0 after so many levels of curves: one finds most factors of 14 digits, two of 19,
/// three of 24.
HugeInteger curveFactor(const HugeInteger& n, size_t levelCount);

} // namespace huge
