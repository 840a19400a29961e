#pragma once

#include "numbers/limbs.h"

#include <cstddef>

namespace huge {

// Elementary functions of fractions of w limbs; see numbers/fixedPoint.h. Errors are absolute, some
// hundred units at a few limbs, and grow with w; at tens of thousands of limbs they stay below
// 2^32 units. A result may be the argument's own array.

/// r = e^x / 16.
void fixedExp(const Limb* x, size_t w, Limb* r);

/// An eighth of the sine and of the cosine of x, x at most 1.
void fixedSinCos(const Limb* x, size_t w, Limb* sine, Limb* cosine);

/// |ln(1 + x)|, or |ln(1 - x)| with negative; x at most a half.
void fixedLn1p(const Limb* x, bool negative, size_t w, Limb* r);

/// The inverse tangent of x.
void fixedAtan(const Limb* x, size_t w, Limb* r);

/// Sine and cosine of an angle below a right one, halved; neither owns its limbs.
struct HalfAngle {
    Limb* sine;
    Limb* cosine;
};

/// Turns angle on by another one whose half sine and half cosine are given. Half of what angle
/// then should be comes out: quarters of sine and cosine. area has 2 * w + fixedMulArea(w) limbs.
void addAngle(const HalfAngle& angle, const Limb* sine, const Limb* cosine, size_t w, Limb* area);

} // namespace huge
