#include "numbers/HugeImag.h"
#include "numbers/elementary.h"
#include "numbers/imagParts.h"

#include <bit>
#include <cstdint>
#include <stdexcept>

namespace huge {

namespace {

/// Integer exponents below 2 to this are powers by squaring: one spare limb holds their rounding
/// errors, and no square on the way leaves the range of exponents.
constexpr int32_t squaringBits = 30;

/// Exponents of e above 2 to this leave the range of exponents of the result.
constexpr int32_t greatestLogarithmBits = 31;

/// Angles above 2 to this are refused: a digit of the result needs all their digits of pi.
constexpr int64_t greatestAngleBits = 1 << 16;

HugeImag real(int64_t value, size_t limbs)
{
    return {HugeFloat(value, limbs), HugeFloat(0, limbs)};
}

/// ln(|z|) on limbs limbs. Where |z| is near 1 its square, less 1, comes from exact products, so
/// that the result is right relative to its own size.
HugeFloat lnAbs(const HugeImag& z, size_t limbs)
{
    if (z.re.isZero() || z.im.isZero())
        return ln(cutTo(z.re.isZero() ? z.im.abs() : z.re.abs(), limbs));
    const HugeFloat re = z.re.abs();
    const HugeFloat im = z.im.abs();
    const HugeFloat& large = re < im ? im : re;
    const HugeFloat& small = re < im ? re : im;
    if (large.exponent() != 0 && large.exponent() != -1)
        return ln(hypotenuse(re, im, limbs));
    const size_t exact = std::min(std::max(limbs, 2 * z.limbCount() + 3), LimbPool::limit - 1);
    const HugeFloat x = cutTo(large, exact);
    const HugeFloat one(1);
    const HugeFloat excess = (x - one) * (x + one) + squareOrZero(cutTo(small, exact));
    return lnOnePlus(cutTo(excess, limbs)).shiftExponent(1);
}

/// The exponent n modulo 4, without calculating a long one.
unsigned quarterTurns(const HugeFloat& n)
{
    if (n.isZero() || n.exponent() > int64_t(64 * n.limbCount()))
        return 0;
    const HugeInteger whole = n.toInteger();
    const unsigned turns = unsigned(whole.limbs()[0] & 3);
    return n.isNegative() ? (4 - turns) & 3 : turns;
}

/// z^n by squaring, for a small integer n. z is scaled to a size between 1 and 4 first.
HugeImag powerBySquaring(const HugeImag& z, const HugeFloat& n, size_t limbs)
{
    const int64_t shift = largerExponent(z);
    const auto scaled = [limbs, shift](const HugeFloat& x) {
        // What is that small is nothing beside the other part, and would only leave the range.
        return x.isZero() || x.exponent() - shift < -(1 << 28)
                   ? HugeFloat(0, limbs)
                   : cutTo(x, limbs).shiftExponent(shift);
    };
    const HugeImag base(scaled(z.re), scaled(z.im));
    const HugeInteger count = n.toInteger().abs();
    const uint64_t bits = count.limbs()[0];
    HugeImag power = base;
    for (int i = int(std::bit_width(bits)) - 2; i >= 0; --i) {
        power = power * power;
        if ((bits >> i & 1) != 0)
            power = power * base;
    }
    const int64_t powerShift = int64_t(bits) * shift;
    if (n.isNegative())
        return (real(1, limbs) / power).shiftExponent(powerShift);
    return power.shiftExponent(-powerShift);
}

/// Limbs on which ln(z) * w has as many digits behind the point as limbs limbs hold.
size_t logarithmLimbs(const HugeImag& z, const HugeImag& w, size_t limbs)
{
    const HugeImag sketch = lnOn(z, 2);
    if (sketch.isZero())
        return limbs;
    const HugeImag power = sketch * cutTo(w, 2);
    const int64_t bits = int64_t(largerExponent(sketch)) + largerExponent(w) + 2;
    // On two limbs the real part means something unless the imaginary one dwarfs it.
    const int64_t realBits = power.re.isZero() ? 0 : power.re.exponent();
    if (realBits > greatestLogarithmBits && (w.im.isZero() || realBits > bits - 100))
        failFloatExponent();
    if (bits > greatestAngleBits)
        throw std::runtime_error("The angle is too large");
    return bits <= 0 ? limbs : std::min(limbs + size_t(bits) / 64 + 1, LimbPool::limit - 1);
}

HugeImag powerByLogarithm(const HugeImag& z, const HugeImag& w, size_t limbs)
{
    const size_t work = logarithmLimbs(z, w, limbs);
    return expOn(lnOn(z, work) * cutTo(w, work), work);
}

/// size^n for a positive size and an integer n.
HugeFloat sizePower(const HugeFloat& size, const HugeFloat& n, size_t limbs)
{
    if (size.isOne())
        return HugeFloat(1, limbs);
    if (n.exponent() < 64)
        return powInt(cutTo(size, limbs), n.toInteger());
    // Only a size that differs from 1 far behind the point has such a power.
    return powerByLogarithm({size, HugeFloat()}, {n, HugeFloat()}, limbs).re;
}

/// z^n for a z on one of the axes and an integer n.
HugeImag powerOnAxis(const HugeImag& z, const HugeFloat& n, size_t limbs)
{
    const bool imaginary = z.re.isZero();
    const HugeFloat& part = imaginary ? z.im : z.re;
    const HugeFloat size = sizePower(part.abs(), n, limbs);
    // The direction of z in quarter turns, times n.
    const unsigned direction = (imaginary ? 1u : 0u) + (part.isNegative() ? 2u : 0u);
    const HugeFloat zero(0, limbs);
    switch (direction * quarterTurns(n) & 3) {
    case 0:
        return {size, zero};
    case 1:
        return {zero, size};
    case 2:
        return {-size, zero};
    default:
        return {zero, -size};
    }
}

HugeImag powerOfZero(const HugeImag& w, size_t limbs)
{
    if (w.isZero())
        return real(1, limbs);
    if (w.re.isZero() || w.re.isNegative())
        throw std::runtime_error("div by zero");
    return real(0, limbs);
}

HugeImag integerPower(const HugeImag& z, const HugeFloat& n, size_t limbs)
{
    if (z.re.isZero() || z.im.isZero())
        return powerOnAxis(z, n, limbs);
    if (n.exponent() < squaringBits)
        return powerBySquaring(z, n, limbs);
    return powerByLogarithm(z, {n, HugeFloat()}, limbs);
}

HugeImag powerOn(const HugeImag& z, const HugeImag& w, size_t limbs)
{
    if (z.isZero())
        return powerOfZero(w, limbs);
    if (w.isZero())
        return real(1, limbs);
    if (!w.im.isZero())
        return powerByLogarithm(z, w, limbs);
    if (w.re.isInteger())
        return integerPower(z, w.re, limbs);
    // Halves are powers of the root, so that those of a negative number stay on their axis.
    if (w.re.exponent() < squaringBits) {
        const HugeFloat twice = w.re.shiftExponent(-1);
        if (twice.isInteger())
            return integerPower(sqrtOn(z, limbs), twice, limbs);
    }
    return powerByLogarithm(z, w, limbs);
}

} // namespace

HugeFloat lnOnePlus(const HugeFloat& u)
{
    if (u.isZero())
        return u;
    const HugeFloat one(1);
    if (u > one)
        return ln(u + one);
    return atanh(u / (u + HugeFloat(2))).shiftExponent(-1);
}

HugeImag lnOn(const HugeImag& z, size_t limbs)
{
    return {lnAbs(z, limbs), argument(z.re, z.im, limbs)};
}

HugeImag expOn(const HugeImag& z, size_t limbs)
{
    const HugeFloat size = exp(cutTo(z.re, limbs));
    if (z.im.isZero())
        return {size, HugeFloat(0, limbs)};
    HugeFloat sine, cosine;
    sinCos(cutTo(z.im, limbs), sine, cosine);
    return {size * cosine, size * sine};
}

HugeImag ln(const HugeImag& z)
{
    if (z.isZero())
        return {HugeFloat(0), HugeFloat()};
    const size_t limbs = precisionOf(z);
    return resultOf(lnOn(z, guarded(limbs)), limbs);
}

HugeImag log(const HugeImag& z, const HugeImag& base)
{
    if (z.isZero() || base.isZero())
        return ln(z) / ln(base);
    const size_t limbs = std::max(precisionOf(z), precisionOf(base));
    const size_t work = guarded(limbs);
    return resultOf(lnOn(z, work) / lnOn(base, work), limbs);
}

HugeImag exp(const HugeImag& z)
{
    const size_t limbs = precisionOf(z);
    return resultOf(expOn(z, guarded(limbs)), limbs);
}

HugeImag sqrt(const HugeImag& z)
{
    const size_t limbs = precisionOf(z);
    if (z.im.isZero())
        return sqrtOn(z, limbs); // the root of a float, right to the last bit
    return resultOf(sqrtOn(z, guarded(limbs)), limbs);
}

HugeImag pow(const HugeImag& z, const HugeImag& w)
{
    const size_t limbs = std::max(precisionOf(z), precisionOf(w));
    if (w.im.isZero() && w.re == HugeFloat(0.5))
        return sqrt(cutTo(z, limbs));
    return resultOf(powerOn(z, w, guarded(limbs)), limbs);
}

HugeImag pow(const HugeImag& z, const HugeFloat& x)
{
    return pow(z, HugeImag(x, HugeFloat()));
}

} // namespace huge
