#pragma once

#include "numbers/limbs.h"

#include <cstddef>

namespace huge {

/// r = a * b over nA + nB limbs, row by row, whatever r held; r is neither operand, and nA >= nB
/// >= 1. Cost: nA * nB. Looks for a stop of the calculation at every row of a long product.
void plainProduct(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r);
/// r = a * a over 2 n limbs, n >= 1: each product of two different limbs is formed once.
void plainSquare(const Limb* a, size_t n, Limb* r) noexcept;

} // namespace huge
