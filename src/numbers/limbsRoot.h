#pragma once

#include "numbers/limbs.h"

#include <cstddef>

namespace huge {

/// Limbs of spare room that limbsRoot needs for a root of n limbs.
size_t limbsRootArea(size_t n) noexcept;

/// root = the whole part of the square root of the 2 n limbs of square, of which one of the two top
/// bits is set; n >= 1. What is left over stays in the low n limbs of square, and the result is the
/// digit above them, 0 or 1. Looks for a stop of the calculation.
Limb limbsRoot(Limb* square, size_t n, Limb* root, Limb* area);

} // namespace huge
