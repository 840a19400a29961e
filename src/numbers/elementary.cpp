#include "numbers/elementary.h"

#include "numbers/elementaryParts.h"
#include "numbers/fixedConstants.h"
#include "numbers/fixedFunctions.h"
#include "numbers/fixedPoint.h"
#include "numbers/limbRows.h"

#include <cmath>
#include <cstdlib>
#include <stdexcept>

namespace huge {

namespace {

/// A constant that is kept at the greatest precision asked for so far.
const HugeFloat& keptOn(size_t limbs, HugeFloat& kept, HugeFloat (*calculate)(size_t))
{
    if (kept.limbCount() < limbs || kept.isNull())
        kept = calculate(std::max<size_t>(limbs, 1));
    return kept;
}

HugeFloat calculateE(size_t n)
{
    const size_t w = guarded(n);
    LimbScratch e(w + 1);
    fixedE(w, e);
    return floatFromFixed(e, w + 1, 64, false, w).resize(n, false);
}

HugeFloat calculateLog2E(size_t n)
{
    const size_t p = guarded(n);
    const HugeFloat ln2 = floatFromFixed(fixedLn2(p + 1), p + 1, 0, false, p);
    return (oneOn(p) / ln2).resize(n, false);
}

/// Takes the whole multiples of ln 2 out of x, w limbs of fraction and one above; gives how many.
int64_t takeMultiplesOfLn2(Limb* x, size_t w)
{
    const Limb* ln2 = fixedLn2(w);
    const double value = double(x[w]) + std::ldexp(double(x[w - 1]), -64);
    int64_t count = int64_t(value * 1.4426950408889634); // right, or one too many or too few
    LimbScratch multiple(w + 1);
    limbsMulLimb(ln2, w, Limb(count), multiple);
    rowSub(x, multiple, w + 1, 0, x);
    if (x[w] >> 63 != 0) {
        limbsAddTo(x, w + 1, ln2, w);
        --count;
    } else if (x[w] != 0 || limbsCompare(x, ln2, w) >= 0) {
        limbsSubFrom(x, w + 1, ln2, w);
        ++count;
    }
    return count;
}

bool isPowerOf2(const HugeFloat& x) noexcept
{
    const size_t n = x.limbCount();
    return !x.isZero() && limbsTrailingZeros(x.limbs(), n) == 64 * n - 1;
}

/// Fails before any long work if a^b, a positive, leaves the range by more than a rounding.
void requirePowerInRange(const HugeFloat& a, const HugeFloat& b)
{
    const uint64_t bound = uint64_t(std::abs(int64_t(a.exponent()))) + 1; // of |log2 a|
    if (int64_t(b.exponent()) + 1 + bitLength64(bound) <= 31)
        return;
    constexpr double range = 2147483650.0;
    const HugeFloat exponent = lnOn(a, 1) * cutTo(b, 1);
    if (std::fabs(exponent.asDouble()) * 1.4426950408889634 > range)
        failFloatExponent();
}

/// a^b for a positive a.
HugeFloat powByLogarithm(const HugeFloat& a, const HugeFloat& b, size_t n)
{
    if (b.exponent() < -64 * int64_t(n) - 40) // ln a is below 2^31
        return oneOn(n);
    // The exponent of e has up to 32 bits above its point: a limb more than what guards the rest.
    const size_t p = guarded(n, 2);
    return expOn(lnOn(a, p) * cutTo(b, p), n);
}

/// a^exponent by squaring, a positive; exponent has at most 64 bits.
HugeFloat powBySquaring(const HugeFloat& a, const HugeInteger& exponent, size_t n)
{
    const size_t bits = exponent.bitLength();
    const size_t p = guarded(n, bits <= 32 ? 1 : 2); // each squaring doubles the error
    const HugeFloat base = cutTo(a, p);
    HugeFloat result = base;
    for (size_t i = bits - 1; i-- > 0;) {
        result = result * result;
        if (exponent.testBit(i))
            result = result * base;
    }
    return (exponent.isNegative() ? oneOn(p) / result : result).resize(n, true);
}

/// 2^(power * exponent).
HugeFloat powOf2(int32_t power, const HugeInteger& exponent, size_t n)
{
    if (power == 0)
        return oneOn(n);
    int64_t product = 0;
    if (!exponent.fitsInt64() || __builtin_mul_overflow(exponent.asInt64(), power, &product))
        failFloatExponent();
    floatExponent(product);
    return oneOn(n).shiftExponent(-product);
}

} // namespace

HugeFloat cubicSeries(const HugeFloat& x, int divisor, size_t n)
{
    const size_t p = guarded(n);
    const HugeFloat value = cutTo(x, p);
    if (x.isZero() || x.exponent() < -32 * int64_t(n) - 2)
        return value.resize(n, true);
    return (value + value * (value * value) / HugeFloat(divisor)).resize(n, true);
}

HugeFloat expOn(const HugeFloat& x, size_t n, int64_t shift)
{
    if (isLostBeside1(x, n))
        return oneOn(n).shiftExponent(-shift);
    if (x.exponent() >= 32)
        failFloatExponent();
    const size_t w = n + 1;
    LimbScratch rest(w + 1);
    fixedFromFloat(x, w, 1, rest);
    int64_t exponent = takeMultiplesOfLn2(rest, w);
    if (x.isNegative()) { // e^-(k ln 2 + r) = 2^-(k + 1) * e^(ln 2 - r)
        limbsSub(fixedLn2(w), w, rest, w, rest);
        exponent = -exponent - 1;
    }
    floatExponent(exponent + shift);
    fixedExp(rest, w, rest);
    return floatFromFixed(rest, w, exponent + shift + 4, false, n);
}

HugeFloat ln1pOn(const HugeFloat& x, size_t n)
{
    if (x.isZero())
        return zeroOn(n);
    if (isLostBeside1(x, n))
        return cutTo(x, guarded(n)).resize(n, true);
    if (isShortSeries(x, n)) {
        const size_t p = guarded(n);
        const HugeFloat u = cutTo(x, p);
        const HugeFloat one = oneOn(p);
        const HugeFloat third = one / HugeFloat(3) - u.shiftExponent(2);
        return (u * (one - u * (one.shiftExponent(1) - u * third))).resize(n, true);
    }
    if (x.exponent() >= -1) {
        const size_t p = guarded(n, 2);
        return lnOn(oneOn(p) + cutTo(x, p), n);
    }
    const size_t w = fractionLimbs(x, n);
    LimbScratch value(w);
    fixedFromFloat(x, w, 0, value);
    fixedLn1p(value, x.isNegative(), w, value);
    return floatFromFixed(value, w, 0, x.isNegative(), n);
}

HugeFloat lnOn(const HugeFloat& x, size_t n, int shift)
{
    const size_t limbs = x.limbCount();
    // x = m * 2^exponent with m in [3/4, 3/2): no sum below takes nearly equal parts.
    const bool below1 = x.limbs()[limbs - 1] >> 62 == 3;
    const int64_t exponent = int64_t(x.exponent()) + shift + (below1 ? 1 : 0);
    const size_t w = exponent == 0 ? limbs : n + 1; // x - 1 is exact
    LimbScratch scratch(w + (w + 1));
    Limb* part = scratch;
    Limb* sum = scratch + w;
    const size_t used = std::min(w, limbs);
    limbsZero(part, w - used);
    limbsCopy(part + (w - used), x.limbs() + (limbs - used), used);
    if (below1)
        limbsNegate(part, w); // 1 - m
    else
        limbsShlSmall(part, w, 1, part); // m - 1: the bit that leaves is the 1
    if (exponent == 0)
        return ln1pOn(floatFromFixed(part, w, 0, below1, limbs), n);
    fixedLn1p(part, below1, w, part);
    limbsMulLimb(fixedLn2(w), w, Limb(exponent < 0 ? -exponent : exponent), sum);
    if (below1 == (exponent < 0))
        limbsAddTo(sum, w + 1, part, w);
    else
        limbsSubFrom(sum, w + 1, part, w);
    return floatFromFixed(sum, w + 1, 64, exponent < 0, n);
}

HugeFloat piOn(size_t n, int shift)
{
    Limb* block = LimbPool::allocate(n);
    HugeFloat pi = HugeFloat::fromBlock(block);
    limbsCopy(block, fixedQuarterPi(n + 1) + 1, n);
    LimbPool::setExponent(block, 1 - shift);
    return pi;
}

void requireLogarithm(const HugeFloat& x)
{
    if (x.isZero())
        throw std::runtime_error("Zero can't be log");
    if (x.isNegative())
        throw std::runtime_error("NegNumber can't be log");
}

const HugeFloat& constPi(size_t limbs)
{
    static HugeFloat kept;
    return keptOn(limbs, kept, [](size_t n) { return piOn(n); });
}

const HugeFloat& constE(size_t limbs)
{
    static HugeFloat kept;
    return keptOn(limbs, kept, calculateE);
}

const HugeFloat& constLog2E(size_t limbs)
{
    static HugeFloat kept;
    return keptOn(limbs, kept, calculateLog2E);
}

HugeFloat log2(const HugeFloat& x)
{
    requireLogarithm(x);
    const size_t n = x.limbCount();
    if (isPowerOf2(x))
        return HugeFloat(int64_t(x.exponent()), n);
    const size_t p = guarded(n);
    return (lnOn(x, p) * cutTo(constLog2E(p), p)).resize(n, true);
}

HugeFloat ln(const HugeFloat& x)
{
    requireLogarithm(x);
    return lnOn(x, x.limbCount());
}

HugeFloat log(const HugeFloat& x, const HugeFloat& base)
{
    requireLogarithm(x);
    requireLogarithm(base);
    if (x.isOne() && !base.isOne())
        return zeroOn(x.limbCount());
    const size_t n = std::max(x.limbCount(), base.limbCount());
    const size_t p = guarded(n);
    return (lnOn(x, p) / lnOn(base, p)).resize(n, true);
}

HugeFloat exp2(const HugeFloat& x, size_t limbs)
{
    const size_t n = limbs == 0 ? limbsOf(x) : limbs;
    if (isLostBeside1(x, n))
        return oneOn(n);
    if (x.exponent() >= 32)
        failFloatExponent();
    const size_t w = n + 1;
    LimbScratch scratch(w + 1 + fixedMulArea(w));
    Limb* rest = scratch;
    fixedFromFloat(x, w, 1, rest);
    int64_t exponent = int64_t(rest[w]);
    const bool whole = limbsIsZero(rest, w);
    if (x.isNegative()) {
        limbsNegate(rest, w);
        exponent = -exponent - (whole ? 0 : 1);
    }
    floatExponent(exponent);
    if (whole)
        return oneOn(n).shiftExponent(-exponent);
    fixedMul(rest, fixedLn2(w), w, rest, rest + (w + 1));
    fixedExp(rest, w, rest);
    return floatFromFixed(rest, w, exponent + 4, false, n);
}

HugeFloat exp(const HugeFloat& x)
{
    return expOn(x, limbsOf(x));
}

HugeFloat pow(const HugeFloat& a, const HugeFloat& b)
{
    const size_t n = limbsOf(a);
    if (b.isZero() || a.isOne())
        return oneOn(n);
    if (b.isInteger() && b.exponent() < 64)
        return powInt(a, b.toInteger());
    if (a.isZero() && !b.isNegative())
        return zeroOn(n);
    requireLogarithm(a);
    requirePowerInRange(a, b);
    return powByLogarithm(a, b, n);
}

HugeFloat powInt(const HugeFloat& a, const HugeInteger& exponent)
{
    const size_t n = limbsOf(a);
    if (exponent.isZero())
        return oneOn(n);
    if (a.isZero())
        return exponent.isNegative() ? oneOn(n) / a : zeroOn(n);
    HugeFloat result;
    if (isPowerOf2(a)) {
        result = powOf2(a.exponent(), exponent, n);
    } else {
        const HugeFloat base = a.abs();
        const HugeFloat b(exponent);
        requirePowerInRange(base, b);
        result = exponent.bitLength() <= 64 ? powBySquaring(base, exponent, n)
                                            : powByLogarithm(base, b, n);
    }
    return std::move(result.setSign(a.isNegative() && !exponent.isEven()));
}

} // namespace huge
