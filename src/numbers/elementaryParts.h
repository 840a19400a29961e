#pragma once

#include "numbers/HugeFloat.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace huge {

// What the elementary functions share: their inner forms, whose result has the limbs asked for and
// is rounded to the nearest but for a tiny part of its last place. Callers see to the domain.

/// The precision of what is calculated from x.
inline size_t limbsOf(const HugeFloat& x) noexcept
{
    return std::max<size_t>(x.limbCount(), 1);
}

/// Limbs to work on for a result of n limbs; a number has no room for a guard limb at the very end.
inline size_t guarded(size_t n, size_t guard = 1) noexcept
{
    return std::min(n + guard, LimbPool::limit - 1);
}

inline HugeFloat zeroOn(size_t n)
{
    return HugeFloat(0, n);
}

inline HugeFloat oneOn(size_t n)
{
    return HugeFloat(1, n);
}

/// The value on n limbs, cut or filled up; also for a number without block.
inline HugeFloat cutTo(const HugeFloat& x, size_t n)
{
    return x.isZero() ? zeroOn(n) : x.resize(n, false);
}

/// Whether 1 + x is 1 on n limbs, within a quarter of the last place.
inline bool isLostBeside1(const HugeFloat& x, size_t n) noexcept
{
    return x.isZero() || x.exponent() < -64 * int64_t(n) - 2;
}

/// Whether the fourth power of x is lost beside 1 on n limbs: of a series in x^2 two terms suffice.
inline bool isShortSeries(const HugeFloat& x, size_t n) noexcept
{
    return x.isZero() || x.exponent() < -16 * int64_t(n) - 2;
}

/// Limbs behind the point that keep the error of a fraction small beside an x below 1, for a result
/// of n limbs: as many more than one guard limb as leading zeros take, at least 40 bits to spare.
inline size_t fractionLimbs(const HugeFloat& x, size_t n) noexcept
{
    return n + 1 + size_t(std::max(40 - int64_t(x.exponent()), int64_t(0))) / 64;
}

/// x + x^3 / divisor for an x that is a short series; divisor is not 0.
HugeFloat cubicSeries(const HugeFloat& x, int divisor, size_t n);

/// e^x * 2^shift.
HugeFloat expOn(const HugeFloat& x, size_t n, int64_t shift = 0);
/// ln(x * 2^shift) for a positive x; shift is 0 unless x is above 2.
HugeFloat lnOn(const HugeFloat& x, size_t n, int shift = 0);
/// ln(1 + x) for an x above -1/2, right relative to its size.
HugeFloat ln1pOn(const HugeFloat& x, size_t n);
/// pi * 2^-shift, truncated.
HugeFloat piOn(size_t n, int shift = 0);

/// Throws std::runtime_error "Zero can't be log" or "NegNumber can't be log" unless x is positive.
void requireLogarithm(const HugeFloat& x);

} // namespace huge
