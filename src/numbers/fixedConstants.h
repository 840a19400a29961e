#pragma once

#include "numbers/limbs.h"

#include <cstddef>

namespace huge {

// Constants as fractions of w limbs, right to a few units. They are kept, and worked out anew when
// more limbs are asked for; a pointer holds until then.

/// The natural logarithm of 2.
const Limb* fixedLn2(size_t w);
/// A quarter of pi.
const Limb* fixedQuarterPi(size_t w);

/// Euler's number: w limbs of fraction and one above, right to a few units. Not kept.
void fixedE(size_t w, Limb* r);

} // namespace huge
