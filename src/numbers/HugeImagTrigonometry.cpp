#include "numbers/HugeImag.h"
#include "numbers/elementary.h"
#include "numbers/imagParts.h"

#include <cstdint>
#include <stdexcept>

namespace huge {

namespace {

/// From here on exp(-2 * |y|) is smaller than any float.
constexpr int32_t vanishingExponent = 29;

/// a * a + b * b; a square that is too small for an exponent counts as 0.
HugeFloat sumOfSquares(const HugeFloat& a, const HugeFloat& b)
{
    return sumOfProducts(a, a, b, b, false);
}

/// tan(x + iy) for |y| of 1 and above, from exp(-2 * |y|), which cannot overflow.
HugeImag tanFarOut(const HugeFloat& x, const HugeFloat& y)
{
    const size_t limbs = x.limbCount();
    const HugeFloat one(1, limbs);
    if (y.exponent() >= vanishingExponent)
        return {HugeFloat(0, limbs), y.isNegative() ? -one : one};
    const HugeFloat q = exp(-y.abs().shiftExponent(-1));
    HugeFloat sine, cosine;
    sinCos(x.shiftExponent(-1), sine, cosine);
    const HugeFloat d = one + (q * cosine).shiftExponent(-1) + q * q;
    const HugeFloat im = (one - q * q) / d;
    return {(q * sine).shiftExponent(-1) / d, y.isNegative() ? -im : im};
}

HugeImag tanOn(const HugeImag& z, size_t limbs)
{
    const HugeFloat x = cutTo(z.re, limbs);
    const HugeFloat y = cutTo(z.im, limbs);
    if (!y.isZero() && y.exponent() >= 0)
        return tanFarOut(x, y);
    HugeFloat sine, cosine;
    sinCos(x, sine, cosine);
    const HugeFloat sineH = sinh(y);
    const HugeFloat d = sumOfSquares(cosine, sineH);
    return {sine * cosine / d, sineH * cosh(y) / d};
}

/// sin(x) * cosh(y) and cos(x) * sinh(y): the parts of sin(x + iy).
HugeImag sinOn(const HugeImag& z, size_t limbs)
{
    const HugeFloat y = cutTo(z.im, limbs);
    HugeFloat sine, cosine;
    sinCos(cutTo(z.re, limbs), sine, cosine);
    return {sine * cosh(y), cosine * sinh(y)};
}

HugeImag cosOn(const HugeImag& z, size_t limbs)
{
    const HugeFloat y = cutTo(z.im, limbs);
    HugeFloat sine, cosine;
    sinCos(cutTo(z.re, limbs), sine, cosine);
    return {cosine * cosh(y), -(sine * sinh(y))};
}

/// sqrt(1 - z) and sqrt(1 + z), from which the inverse sine and cosine come without cancellation
/// (Kahan, Branch cuts for complex elementary functions, 1987). A root of a negative number lies on
/// the positive imaginary axis, which settles the values on the cuts.
struct RootPair {
    RootPair(const HugeImag& z, size_t limbs)
        : minus(sqrtOn({HugeFloat(1, limbs) - z.re, -z.im}, limbs)),
          plus(sqrtOn({HugeFloat(1, limbs) + z.re, z.im}, limbs))
    {}

    HugeImag minus;
    HugeImag plus;
};

HugeImag asinOn(const HugeImag& z, size_t limbs)
{
    const RootPair roots(z, limbs);
    const HugeFloat across =
        sumOfProducts(roots.minus.re, roots.plus.re, roots.minus.im, roots.plus.im, true);
    const HugeFloat height =
        sumOfProducts(roots.minus.re, roots.plus.im, roots.minus.im, roots.plus.re, true);
    return {argument(across, z.re, limbs), asinh(height)};
}

HugeImag acosOn(const HugeImag& z, size_t limbs)
{
    const RootPair roots(z, limbs);
    const HugeFloat height =
        sumOfProducts(roots.plus.re, roots.minus.im, roots.plus.im, roots.minus.re, true);
    return {argument(roots.plus.re, roots.minus.re, limbs).shiftExponent(-1), asinh(height)};
}

/// ln(z + sqrt(z * z - 1)). Its root is the one with a positive real part, so that the result is
/// i * acos(z) in one half of the quadrants and -i * acos(z) in the other; on the real axis beyond
/// 1 it is real, before -1 it has the angle pi.
HugeImag acoshOn(const HugeImag& z, size_t limbs)
{
    const HugeImag angle = acosOn(z, limbs);
    if (z.re.isZero() || (z.im.isZero() && z.re.abs() <= HugeFloat(1)))
        return timesI(angle);
    if (z.im.isZero() && z.re.isNegative())
        return {angle.im, angle.re};
    if (z.im.isZero() || z.re.isNegative() != z.im.isNegative())
        return timesMinusI(angle);
    return timesI(angle);
}

/// ln((1 + z) / (1 - z)) / 2 for z other than 1 and -1.
HugeImag atanhOn(const HugeImag& z, size_t limbs)
{
    const HugeFloat x = cutTo(z.re, limbs);
    const HugeFloat y = cutTo(z.im, limbs);
    const HugeFloat one(1, limbs);
    if (!z.isZero() && largerExponent(z) > int64_t(64 * limbs + 8)) {
        const HugeFloat quarterTurn = cutTo(constPi(limbs), limbs).shiftExponent(1);
        return {(HugeImag(one, HugeFloat(0, limbs)) / HugeImag(x, y)).re,
                y.isNegative() ? -quarterTurn : quarterTurn};
    }
    const HugeFloat left = one - x;
    const HugeFloat right = one + x;
    // The real part is odd in x; on the positive side its logarithm has no argument near 0.
    const HugeFloat d = sumOfSquares(x.isNegative() ? right : left, y);
    const HugeFloat size = lnOnePlus((x.abs() / d).shiftExponent(-2)).shiftExponent(2);
    const HugeFloat angle = argument(left * right - squareOrZero(y), y.shiftExponent(-1), limbs);
    return {x.isNegative() ? -size : size, angle.shiftExponent(1)};
}

bool isPlusOne(const HugeImag& z) noexcept
{
    return z.im.isZero() && z.re.isOne();
}

bool isMinusOne(const HugeImag& z) noexcept
{
    return z.im.isZero() && z.re.isMinusOne();
}

/// A function on a spare limb, then cut.
HugeImag calculate(HugeImag (*function)(const HugeImag&, size_t), const HugeImag& z)
{
    const size_t limbs = precisionOf(z);
    return resultOf(function(z, guarded(limbs)), limbs);
}

/// The same for functions of the angle i * z, whose result is turned back by -i.
HugeImag calculateTurned(HugeImag (*function)(const HugeImag&, size_t), const HugeImag& z)
{
    return timesMinusI(calculate(function, timesI(z)));
}

} // namespace

HugeImag sin(const HugeImag& z)
{
    if (z.im.isZero())
        return {sin(cutTo(z.re, std::max<size_t>(z.re.limbCount(), 1))), HugeFloat(0)};
    return calculate(sinOn, z);
}

HugeImag cos(const HugeImag& z)
{
    if (z.im.isZero())
        return {cos(cutTo(z.re, std::max<size_t>(z.re.limbCount(), 1))), HugeFloat(0)};
    return calculate(cosOn, z);
}

HugeImag tan(const HugeImag& z)
{
    return calculate(tanOn, z);
}

HugeImag sinh(const HugeImag& z)
{
    return calculateTurned(sinOn, z);
}

HugeImag cosh(const HugeImag& z)
{
    return calculate(cosOn, timesI(z));
}

HugeImag tanh(const HugeImag& z)
{
    return calculateTurned(tanOn, z);
}

HugeImag asin(const HugeImag& z)
{
    return calculate(asinOn, z);
}

HugeImag acos(const HugeImag& z)
{
    return calculate(acosOn, z);
}

HugeImag asinh(const HugeImag& z)
{
    return calculateTurned(asinOn, z);
}

HugeImag acosh(const HugeImag& z)
{
    return calculate(acoshOn, z);
}

// The poles: the logarithm's quotient has a divisor of zero at one of them, and is zero at the
// other.

HugeImag atanh(const HugeImag& z)
{
    if (isPlusOne(z))
        throw std::runtime_error("div by zero");
    if (isMinusOne(z))
        return ln(HugeImag());
    return calculate(atanhOn, z);
}

HugeImag atan(const HugeImag& z)
{
    const HugeImag turned = timesI(z);
    if (isPlusOne(turned))
        throw std::runtime_error("div by zero");
    if (isMinusOne(turned))
        return {HugeFloat(0), HugeFloat(0)};
    return calculateTurned(atanhOn, z);
}

} // namespace huge
