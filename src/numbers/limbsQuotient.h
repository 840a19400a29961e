#pragma once

#include "numbers/limbs.h"

#include <cstddef>

namespace huge {

/// Limbs of spare room that limbsQuotient needs for operands of so many limbs.
size_t limbsQuotientArea(size_t nNum, size_t nDen) noexcept;

/// Divides num by den, whose top bit is set, by the quickest way for the lengths; nNum >= nDen >=
/// 1. q gets nNum - nDen limbs, the result is the digit above them, 0 or 1. The remainder stays in
/// the low nDen limbs of num, the limbs above it are cleared. Looks for a stop of the calculation.
Limb limbsQuotient(Limb* num, size_t nNum, const Limb* den, size_t nDen, Limb* q, Limb* area);
/// The same, with spare room of its own where it needs any.
Limb limbsQuotient(Limb* num, size_t nNum, const Limb* den, size_t nDen, Limb* q);

} // namespace huge
