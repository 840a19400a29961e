#pragma once

#include "numbers/HugeFloat.h"
#include "numbers/limbs.h"

#include <cstddef>
#include <cstdint>

namespace huge {

// Fractions on raw limb arrays, on which the elementary functions are worked out: w limbs, limb 0
// lowest, read as an integer over 2^(64 * w), so each is at least 0 and below 1. An error is
// counted in units of the last of these limbs. The first w limbs from the top of a longer fraction
// are the same value with less precision.

/// Limbs of spare room that fixedMul needs for fractions of w limbs or fewer.
size_t fixedMulArea(size_t w) noexcept;

/// r = a * b, less up to w + 1 units; r may be a or b. The columns of a short product that lie
/// wholly below the last limb are not formed. Looks for a stop of the calculation in long products.
void fixedMul(const Limb* a, const Limb* b, size_t w, Limb* r, Limb* area);

/// |x| truncated to w limbs of fraction and intLimbs limbs above them, which hold it.
void fixedFromFloat(const HugeFloat& x, size_t w, size_t intLimbs, Limb* r) noexcept;

/// The fraction of count limbs times 2^shift, on limbCount limbs, rounded to the nearest. Throws
/// by the range of exponents and by the limb limit.
HugeFloat floatFromFixed(const Limb* a, size_t count, int64_t shift, bool negative,
                         size_t limbCount);

} // namespace huge
