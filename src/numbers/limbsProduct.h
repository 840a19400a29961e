#pragma once

#include "numbers/limbs.h"

#include <cstddef>

namespace huge {

/// Limbs of spare room that limbsProduct needs for operands of so many limbs.
size_t limbsProductArea(size_t nA, size_t nB) noexcept;

/// r = a * b over nA + nB limbs, whatever r held, by the quickest way for the lengths; r and the
/// area are neither operand. Where both operands are the same array the square is formed. Either
/// length may be 0, r is cleared then. Looks for a stop of the calculation.
void limbsProduct(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r, Limb* area);
/// The same, with spare room of its own where it needs any.
void limbsProduct(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r);

} // namespace huge
