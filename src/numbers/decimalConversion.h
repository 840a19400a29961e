#pragma once

#include "numbers/HugeInteger.h"

#include <cstddef>
#include <string>

namespace huge {

// Decimal digits of natural numbers and back. Short numbers go by 19 digits, the most that one limb
// holds, in passes over their limbs; long ones are cut at half of their digits, by divisions by or
// products with 10^19 squared again and again, which are kept for the call (Brent and Zimmermann,
// Modern Computer Arithmetic, 1.7). So the cost is that of a product, times the logarithm of the
// length. Both look for a stop of the calculation.

/// The digits of n limbs, zeros in front included where they fall; none for zero.
std::string decimalDigitsOf(const Limb* limbs, size_t n);
/// The number that count digits tell, without spare limbs. Throws by the limb limit.
HugeInteger fromDecimalDigits(const char* digits, size_t count);

} // namespace huge
