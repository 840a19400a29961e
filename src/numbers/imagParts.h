#pragma once

#include "numbers/HugeImag.h"
#include "numbers/elementaryParts.h"

#include <algorithm>
#include <cstddef>

namespace huge {

// What the functions of complex numbers share. They work on more limbs than their result has and
// build on real functions whose relative error is small for every argument, in forms where nothing
// near to equal is subtracted. Only the last step cuts.

/// The precision of what is calculated from z: that of its longer part.
inline size_t precisionOf(const HugeImag& z) noexcept
{
    return std::max<size_t>(z.limbCount(), 1);
}

inline HugeImag cutTo(const HugeImag& z, size_t limbs)
{
    return {cutTo(z.re, limbs), cutTo(z.im, limbs)};
}

/// The result of a function: x without its spare limb, truncated as in all arithmetic, so that a
/// right angle is pi / 2 as pi is cut elsewhere. A value that its errors may have kept below an
/// exact one is lifted to it.
HugeFloat resultOf(const HugeFloat& x, size_t limbs);

inline HugeImag resultOf(const HugeImag& z, size_t limbs)
{
    return {resultOf(z.re, limbs), resultOf(z.im, limbs)};
}

/// i * z and -i * z, exactly.
inline HugeImag timesI(const HugeImag& z)
{
    return {z.im.negate(), z.re};
}

inline HugeImag timesMinusI(const HugeImag& z)
{
    return {z.im, z.re.negate()};
}

/// The exponent of the larger part of a z that is not zero.
int32_t largerExponent(const HugeImag& z) noexcept;

/// a * b + c * d, or the difference with subtract. A product too small for an exponent counts as 0
/// where the other one dwarfs it; else it fails as a product does.
HugeFloat sumOfProducts(const HugeFloat& a, const HugeFloat& b, const HugeFloat& c,
                        const HugeFloat& d, bool subtract);

/// x * x, 0 where that is too small for an exponent.
HugeFloat squareOrZero(const HugeFloat& x);

/// sqrt(a * a + b * b) on limbs limbs, whatever the exponents of a and b are.
HugeFloat hypotenuse(const HugeFloat& a, const HugeFloat& b, size_t limbs);

/// The angle of (re, im) between -pi, excluded, and pi on limbs limbs; 0 for zero.
HugeFloat argument(const HugeFloat& re, const HugeFloat& im, size_t limbs);

/// sqrt(z) and ln(z), z not zero, on limbs limbs, not cut.
HugeImag sqrtOn(const HugeImag& z, size_t limbs);
HugeImag lnOn(const HugeImag& z, size_t limbs);
HugeImag expOn(const HugeImag& z, size_t limbs);

/// ln(1 + u) for u above -1, also for a small u.
HugeFloat lnOnePlus(const HugeFloat& u);

} // namespace huge
