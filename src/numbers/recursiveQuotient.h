#pragma once

#include "numbers/limbs.h"

#include <cstddef>

namespace huge {

/// Divisions with at least this many limbs of quotient and of divisor are done by halves. Measured.
constexpr size_t recursiveQuotientLimbs = 64;

/// Limbs of spare room that recursiveQuotient needs.
size_t recursiveQuotientArea(size_t n) noexcept;

/// Divides the 2 n limbs of num by the n limbs of den, whose top bit is set. q gets n limbs, the
/// result is the digit above them, 0 or 1. The remainder stays in the low n limbs of num, the limbs
/// above it are cleared. The upper half of the quotient comes from a division by the upper part of
/// the divisor, what it leaves out is taken off by one product, and the lower half follows in the
/// same way (Burnikel and Ziegler, Fast recursive division, 1998). Cost: that of a product, times
/// the logarithm of n at most. Looks for a stop of the calculation.
Limb recursiveQuotient(Limb* num, const Limb* den, size_t n, Limb* q, Limb* area);

/// num -= (extra * 2^(64 nQ) + q) * den over the n limbs from num on, where the quotient was found
/// without the nDen limbs of den, and nQ + nDen <= n. While that is negative, the quotient is one
/// too large: `whole`, the n limbs of the whole divisor, is added back and q taken down by 1. Gives
/// what is left of extra. The area holds nQ + nDen limbs and what their product needs.
Limb subtractLeftOut(Limb* num, size_t n, Limb* q, size_t nQ, Limb extra, const Limb* den,
                     size_t nDen, const Limb* whole, Limb* area);

} // namespace huge
