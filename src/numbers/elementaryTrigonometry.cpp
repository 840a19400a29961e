#include "numbers/elementary.h"

#include "common/XStop.h"
#include "numbers/elementaryParts.h"
#include "numbers/fixedConstants.h"
#include "numbers/fixedFunctions.h"
#include "numbers/fixedPoint.h"
#include "numbers/limbRows.h"
#include "numbers/limbsProduct.h"
#include "numbers/limbsQuotient.h"

#include <stdexcept>

namespace huge {

namespace {

/// Angles from 2^maxAngleBits upwards are refused: to find where they lie on the circle takes as
/// many bits of pi.
constexpr int32_t maxAngleBits = 1 << 20;

/// An angle as quarter * pi / 2 + sign * rest, with the rest in [0, pi / 4], right relative to its
/// size, and quarter from 0 to 3.
struct ReducedAngle {
    HugeFloat rest;
    unsigned quarter = 0;
};

/// Half of |x| less the nearest lower multiple of pi / 4: w limbs of fraction, into rest, and the
/// multiple modulo 4. With h = |x| / 2 the quotient of h and pi / 4 counts right angles.
unsigned takeRightAngles(const HugeFloat& x, size_t w, Limb* rest)
{
    const size_t whole = size_t(std::max(x.exponent(), 0)) / 64 + 1; // limbs above the point
    const size_t f = w + whole; // pi is multiplied by a number of that many limbs
    const Limb* quarterPi = fixedQuarterPi(f);
    LimbScratch scratch(2 * (f + whole) + (2 * whole + 1) + whole);
    Limb* half = scratch;
    Limb* product = half + (f + whole);
    Limb* dividend = product + (f + whole);
    Limb* count = dividend + (2 * whole + 1);
    fixedFromFloat(x.shiftExponent(1), f, whole, half);
    limbsCopy(dividend, half + (f - whole - 1), 2 * whole + 1);
    limbsQuotient(dividend, 2 * whole + 1, quarterPi + (f - whole - 1), whole + 1, count);
    limbsProduct(quarterPi, f, count, whole, product);
    // The count is right, or one too great where the last bits decide.
    Limb quarter = count[0];
    if (limbsSubFrom(half, f + whole, product, f + whole) != 0) {
        limbsSub(quarterPi, f, half, f, half);
        --quarter;
    } else if (limbsCompareLow(half, f + whole, quarterPi, f) >= 0) {
        limbsSubFrom(half, f, quarterPi, f);
        ++quarter;
    }
    limbsCopy(rest, half + whole, w);
    return unsigned(quarter % 4);
}

/// The reduced form of |x|, to n limbs. The rest carries its sign.
ReducedAngle reduce(const HugeFloat& x, size_t n)
{
    if (x.exponent() < -1) // below pi / 4
        return {cutTo(x, std::min(guarded(n), limbsOf(x))).setSign(false), 0};
    if (x.exponent() >= maxAngleBits)
        throw std::runtime_error("The angle is too large");
    // An angle close to a multiple of a right one leaves a small rest: as many limbs more are
    // worked out as the first try shows to be missing.
    for (size_t w = n + 1;;) {
        LimbScratch rest(w);
        unsigned quarter = takeRightAngles(x, w, rest);
        LimbScratch other(w);
        limbsSub(fixedQuarterPi(w), w, rest, w, other);
        const bool fold = limbsCompare(other, rest, w) < 0;
        Limb* nearest = fold ? other : rest;
        const size_t leading = limbsLeadingZeros(nearest, w);
        if (64 * w >= 64 * n + 40 + leading)
            return {floatFromFixed(nearest, w, 1, fold, guarded(n)), (quarter + fold) % 4};
        w = n + 2 + leading / 64;
        xstd::XStop::poll();
    }
}

/// Which of the two a caller wants; a null pointer means that it does not.
struct SinCosWanted {
    HugeFloat* sine;
    HugeFloat* cosine;
};

/// Sine and cosine of a rest that may be negative.
void sinCosOfRest(const HugeFloat& x, size_t n, const SinCosWanted& wanted)
{
    if (isShortSeries(x, n)) {
        if (wanted.sine != nullptr)
            *wanted.sine = cubicSeries(x, -6, n);
        if (wanted.cosine != nullptr) {
            const HugeFloat value = cutTo(x, guarded(n));
            *wanted.cosine = x.exponent() < -32 * int64_t(n) - 2
                                 ? oneOn(n)
                                 : (oneOn(1) - (value * value).shiftExponent(1)).resize(n, true);
        }
        return;
    }
    const size_t w = fractionLimbs(x, n);
    LimbScratch scratch(3 * w);
    Limb* angle = scratch;
    Limb* sine = scratch + w;
    Limb* cosine = scratch + 2 * w;
    fixedFromFloat(x, w, 0, angle);
    fixedSinCos(angle, w, sine, cosine);
    if (wanted.sine != nullptr)
        *wanted.sine = floatFromFixed(sine, w, 3, x.isNegative(), n);
    if (wanted.cosine != nullptr)
        *wanted.cosine = floatFromFixed(cosine, w, 3, false, n);
}

/// Sine and cosine of an x that is not 0.
void sinCosOn(const HugeFloat& x, size_t n, const SinCosWanted& wanted)
{
    const ReducedAngle angle = reduce(x, n);
    const bool swapped = angle.quarter % 2 != 0;
    sinCosOfRest(angle.rest, n,
                 swapped ? SinCosWanted{wanted.cosine, wanted.sine} : SinCosWanted{wanted});
    if (wanted.sine != nullptr && (angle.quarter >= 2) != x.isNegative())
        wanted.sine->negate_();
    if (wanted.cosine != nullptr && (angle.quarter == 1 || angle.quarter == 2))
        wanted.cosine->negate_();
}

/// The inverse tangent of an x from 0 to 1.
HugeFloat atanUpTo1(const HugeFloat& x, size_t n)
{
    if (x.isZero())
        return zeroOn(n);
    if (x.exponent() >= 0)
        return piOn(n, 2);
    if (isShortSeries(x, n))
        return cubicSeries(x, -3, n);
    const size_t w = fractionLimbs(x, n);
    LimbScratch value(w);
    fixedFromFloat(x, w, 0, value);
    fixedAtan(value, w, value);
    return floatFromFixed(value, w, 0, false, n);
}

/// The inverse cosine of |x|, x inside [-1, 1]: 2 atan sqrt((1 - |x|) / (1 + |x|)).
HugeFloat acosOfMagnitude(const HugeFloat& x, size_t n)
{
    const size_t p = guarded(n);
    const HugeFloat value = cutTo(x.abs(), std::max(p, guarded(limbsOf(x))));
    const HugeFloat ratio = (oneOn(1) - value) / (oneOn(1) + value);
    return atanUpTo1(cutTo(ratio, p).sqrt(), n).shiftExponent(-1);
}

void requireSine(const HugeFloat& x)
{
    if (x.exponent() >= 0 && !x.isZero() && !x.isOne() && !x.isMinusOne())
        throw std::runtime_error("arcsin(x) only valid for -1<=x<=1");
}

} // namespace

void sinCos(const HugeFloat& x, HugeFloat& sine, HugeFloat& cosine)
{
    const size_t n = limbsOf(x);
    if (x.isZero()) {
        sine = zeroOn(n);
        cosine = oneOn(n);
        return;
    }
    HugeFloat newSine; // x may be one of the results
    HugeFloat newCosine;
    sinCosOn(x, n, {&newSine, &newCosine});
    sine = std::move(newSine);
    cosine = std::move(newCosine);
}

HugeFloat sin(const HugeFloat& x)
{
    const size_t n = limbsOf(x);
    if (x.isZero())
        return zeroOn(n);
    HugeFloat result;
    sinCosOn(x, n, {&result, nullptr});
    return result;
}

HugeFloat cos(const HugeFloat& x)
{
    const size_t n = limbsOf(x);
    if (x.isZero())
        return oneOn(n);
    HugeFloat result;
    sinCosOn(x, n, {nullptr, &result});
    return result;
}

HugeFloat tan(const HugeFloat& x)
{
    const size_t n = limbsOf(x);
    if (x.isZero())
        return zeroOn(n);
    HugeFloat sine;
    HugeFloat cosine;
    sinCosOn(x, guarded(n), {&sine, &cosine});
    return (sine / cosine).resize(n, true);
}

HugeFloat asin(const HugeFloat& x)
{
    if (x.isZero())
        return zeroOn(1);
    requireSine(x);
    const size_t n = x.limbCount();
    HugeFloat result;
    if (x.exponent() >= 0) {
        result = piOn(n, 1);
    } else if (isShortSeries(x, n)) {
        result = cubicSeries(x, 6, n);
        return result;
    } else if (x.exponent() == -1) { // at least a half: nothing is lost in the difference
        const size_t p = guarded(n);
        result = (piOn(p, 1) - acosOfMagnitude(x, p)).resize(n, true);
    } else {
        const size_t p = guarded(n);
        const HugeFloat value = cutTo(x.abs(), p);
        const HugeFloat cosine = ((oneOn(1) - value) * (oneOn(1) + value)).sqrt();
        result = atanUpTo1(value / cosine, n);
    }
    return std::move(result.setSign(x.isNegative()));
}

HugeFloat acos(const HugeFloat& x)
{
    const size_t n = limbsOf(x);
    if (x.isZero())
        return piOn(n, 1);
    requireSine(x);
    if (x.exponent() >= 0)
        return x.isNegative() ? piOn(n) : zeroOn(n);
    if (!x.isNegative())
        return acosOfMagnitude(x, n);
    const size_t p = guarded(n);
    return (piOn(p) - acosOfMagnitude(x, p)).resize(n, true);
}

HugeFloat atan(const HugeFloat& x)
{
    const size_t n = limbsOf(x);
    HugeFloat result;
    if (x.exponent() < 0 || x.isZero() || x.isOne() || x.isMinusOne()) {
        result = atanUpTo1(x.abs(), n);
    } else if (x.exponent() > 64 * int64_t(n) + 2) {
        result = piOn(n, 1);
    } else {
        const size_t p = guarded(n);
        result = (piOn(p, 1) - atanUpTo1(oneOn(p) / cutTo(x.abs(), p), p)).resize(n, true);
    }
    return std::move(result.setSign(x.isNegative()));
}

} // namespace huge
