#include "numbers/elementary.h"

#include "numbers/elementaryParts.h"

#include <cmath>
#include <stdexcept>

namespace huge {

namespace {

/// Whether e^-2|x| is lost beside 1 on n limbs: 2 |x| / ln 2 > 64 n + 2.
bool isAllGrowth(const HugeFloat& x, size_t n) noexcept
{
    return !x.isZero() && (x.exponent() >= 32 || std::fabs(x.asDouble()) > 22.5 * double(n) + 2);
}

/// Whether x^2 + 1 and x^2 - 1 are x^2 on n limbs, so that both inverse functions are ln(2 x).
bool isFarOut(const HugeFloat& x, size_t n) noexcept
{
    return x.exponent() > 32 * int64_t(n) + 2;
}

} // namespace

HugeFloat sinh(const HugeFloat& x)
{
    const size_t n = limbsOf(x);
    if (isShortSeries(x, n))
        return cubicSeries(x, 6, n);
    HugeFloat result;
    if (isAllGrowth(x, n)) {
        result = expOn(x.abs(), n, -1);
    } else {
        const size_t p = guarded(fractionLimbs(x, n), 0);
        const HugeFloat power = expOn(x.abs(), p);
        result = (power - oneOn(1) / power).shiftExponent(1).resize(n, true);
    }
    return std::move(result.setSign(x.isNegative()));
}

HugeFloat cosh(const HugeFloat& x)
{
    const size_t n = limbsOf(x);
    if (isAllGrowth(x, n))
        return expOn(x.abs(), n, -1);
    const HugeFloat power = expOn(x.abs(), guarded(n));
    return (power + oneOn(1) / power).shiftExponent(1).resize(n, true);
}

HugeFloat tanh(const HugeFloat& x)
{
    const size_t n = limbsOf(x);
    if (isShortSeries(x, n))
        return cubicSeries(x, -3, n);
    HugeFloat result;
    if (isAllGrowth(x, n)) {
        result = oneOn(n);
    } else {
        const size_t p = guarded(fractionLimbs(x, n), 0);
        const HugeFloat square = expOn(x.abs().shiftExponent(-1), p);
        result = ((square - oneOn(1)) / (square + oneOn(1))).resize(n, true);
    }
    return std::move(result.setSign(x.isNegative()));
}

HugeFloat asinh(const HugeFloat& x)
{
    const size_t n = limbsOf(x);
    if (isShortSeries(x, n))
        return cubicSeries(x, -6, n);
    HugeFloat result;
    if (isFarOut(x, n)) {
        result = lnOn(x.abs(), n, 1);
    } else {
        const size_t p = guarded(n);
        const HugeFloat value = cutTo(x.abs(), p);
        const HugeFloat square = value * value;
        const HugeFloat root = (square + oneOn(1)).sqrt();
        // x + root - 1 without the loss of a small x: root - 1 = x^2 / (root + 1).
        result = x.exponent() < 0 ? ln1pOn(value + square / (root + oneOn(1)), n)
                                  : lnOn(value + root, n);
    }
    return std::move(result.setSign(x.isNegative()));
}

HugeFloat acosh(const HugeFloat& x)
{
    const size_t n = limbsOf(x);
    if (x.isZero() || x.isNegative() || x.exponent() < 0)
        throw std::runtime_error(
            "The definition domain of inverse hyperbolic cosine function is [1, infinite)");
    if (isFarOut(x, n))
        return lnOn(x, n, 1);
    const size_t p = guarded(n);
    const HugeFloat value = cutTo(x, p);
    const HugeFloat excess = value - oneOn(1);
    const HugeFloat root = (excess * (value + oneOn(1))).sqrt();
    return x.exponent() == 0 ? ln1pOn(excess + root, n) : lnOn(value + root, n);
}

HugeFloat atanh(const HugeFloat& x)
{
    const size_t n = limbsOf(x);
    if (!x.isZero() && x.exponent() >= 0)
        throw std::runtime_error(
            "The definition domain of inverse hyperbolic tangent function is (- 1,1)");
    if (isShortSeries(x, n))
        return cubicSeries(x, 3, n);
    // (1 + |x|) / (1 - |x|) is 1 + 2 |x| / (1 - |x|).
    const HugeFloat value = cutTo(x.abs(), guarded(n));
    const HugeFloat ratio = value.shiftExponent(-1) / (oneOn(1) - value);
    return std::move(ln1pOn(ratio, n).shiftExponent(1).setSign(x.isNegative()));
}

} // namespace huge
