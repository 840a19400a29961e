#pragma once

#include "numbers/HugeInteger.h"

#include <cstddef>

namespace huge {

/// Roots of numbers of at least this many limbs are taken by halves. Measured.
constexpr size_t recursiveRootLimbs = 12;

/// The square root of a number above 1 by Newton's iteration, which ends when a step changes 1 at
/// most: the whole part of the root, or one more where a is one less than the next square. Its limb
/// count is that of the longest quotient on the way.
HugeInteger plainRoot(const HugeInteger& a);

} // namespace huge
