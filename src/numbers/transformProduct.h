#pragma once

#include "numbers/limbs.h"

#include <cstddef>

namespace huge {

/// Operands of at least this many limbs, and not much shorter than their partner, are multiplied by
/// transforms. Measured.
constexpr size_t transformLimbs = 1200;

/// Whether a product of so many limbs in all fits the transforms.
bool fitsTransform(size_t nA, size_t nB) noexcept;
/// Limbs of spare room that transformProduct needs; the product fits.
size_t transformProductArea(size_t nA, size_t nB) noexcept;

/// r = a * b over nA + nB limbs, whatever r held; r is neither operand, and nB >= 1 is at most nA.
/// The numbers are cut into digits of some 54 bits, which are multiplied as polynomials modulo two
/// primes of 62 bits; the Chinese remainder theorem gives the exact sums. Cost: n log n.
/// (Pollard, The fast Fourier transform in a finite field, 1971.) Looks for a stop of the
/// calculation between the transforms.
void transformProduct(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r, Limb* area);

} // namespace huge
