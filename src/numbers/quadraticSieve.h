#pragma once

#include "numbers/HugeInteger.h"

#include <cstddef>

namespace huge {

/// Numbers of at most so many bits are for the quadratic sieve where nothing quicker splits them.
/// Beyond, its last step alone would take minutes and hundreds of megabytes.
constexpr size_t sieveBits = 290;

/// A factor of n that is neither 1 nor n, by the self-initialising quadratic sieve (Contini,
/// Factoring integers with the self-initializing quadratic sieve, 1997). n is odd, composite, no
/// power of a number, without small factors and of at most sieveBits bits. The time grows with the
/// size of n alone: some hundredths of a second for 128 bits, some seconds for 200. Looks for a
/// stop of the calculation.
HugeInteger sieveFactor(const HugeInteger& n);

} // namespace huge
