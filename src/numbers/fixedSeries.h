#pragma once

#include "numbers/limbs.h"

#include <cstddef>

namespace huge {

// Taylor series of small fractions; see numbers/fixedPoint.h for what a fraction is.

/// Half of e^x, x below 2^-8.
void seriesExp(const Limb* x, size_t w, Limb* r);
/// Half the sine and half the cosine of x, x below 2^-8.
void seriesSinCos(const Limb* x, size_t w, Limb* sine, Limb* cosine);

} // namespace huge
