#pragma once

#include "numbers/limbs.h"

#include <cstddef>

namespace huge {

/// Operands of at least this many limbs are multiplied by halves. Measured.
constexpr size_t karatsubaLimbs = 30;
/// The same for a number with itself, whose plain rows cost half.
constexpr size_t karatsubaSquareLimbs = 44;

/// Limbs of spare room that karatsubaProduct and karatsubaSquare need for n limbs.
constexpr size_t karatsubaArea(size_t n) noexcept
{
    return 2 * n + 128;
}

/// r = a * b over 2 n limbs, whatever r held; r is neither operand. Three products of halves take
/// the place of four (Karatsuba and Ofman, Multiplication of multidigit numbers on automata, 1962),
/// down to the length where plain rows are quicker. Cost: n^1.585. Looks for a stop of the
/// calculation.
void karatsubaProduct(const Limb* a, const Limb* b, size_t n, Limb* r, Limb* area);
/// r = a * a in the same way.
void karatsubaSquare(const Limb* a, size_t n, Limb* r, Limb* area);

} // namespace huge
