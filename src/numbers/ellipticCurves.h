#pragma once

#include "numbers/HugeInteger.h"

namespace huge {

/// A factor of n that is neither 1 nor n, by elliptic curves. n is odd, composite, no power of a
/// number and without small factors. The time grows with the size of the smallest factor: some
/// tenths of a second for 19 digits, half a minute or more for 27.
HugeInteger curveFactor(const HugeInteger& n);

} // namespace huge
