#include "numbers/fixedSeries.h"

#include "common/XStop.h"
#include "numbers/LimbPool.h"
#include "numbers/fixedPoint.h"
#include "numbers/limbRows.h"

#include <algorithm>

namespace huge {

namespace {

/// Each is a sum of t^k / (product of the factors of 1 to k), the signs alternating but for Exp.
/// With t = x * x the cosine is Cos, the sine is x * Sin.
enum class Series { Exp, Sin, Cos };

/// What the k-th term is divided by, after the one before it.
Limb factorOf(Series series, Limb k) noexcept
{
    switch (series) {
    case Series::Sin:
        return 2 * k * (2 * k + 1);
    case Series::Cos:
        return (2 * k - 1) * (2 * k);
    case Series::Exp:
        break;
    }
    return k;
}

/// Terms that count in a sum of w limbs, where t is below 2^-bits.
size_t termsOf(Series series, size_t bits, size_t w) noexcept
{
    size_t k = 1;
    for (size_t reached = bits; reached <= 64 * w; ++k)
        reached += bits + bitLength64(factorOf(series, k)) - 1;
    return k + 1;
}

/// Rows t, t^2, ..., t^count of w limbs each.
struct Powers {
    const Limb* row(size_t k) const noexcept { return limbs + (k - 1) * w; }

    Limb* limbs;
    size_t count;
    size_t w;
};

/// Powers enough for a sum of so many terms: a block of them per product pays best where both are
/// as many, and the products run on shorter numbers.
size_t powersFor(size_t terms) noexcept
{
    size_t m = 2;
    while (2 * m * m < terms)
        ++m;
    return m;
}

void fillPowers(const Powers& powers, Limb* area)
{
    for (size_t k = 2; k <= powers.count; ++k) // every second one is a square, which costs less
        fixedMul(powers.row(k / 2), powers.row(k - k / 2), powers.w,
                 powers.limbs + (k - 1) * powers.w, area);
}

/// A running sum: a fraction with one limb above it, negative in two's complement.
struct Sum {
    bool negative() const noexcept { return above() >> 63 != 0; }
    Limb& above() const noexcept { return limbs[w]; }
    /// The top v limbs of the fraction with the limb above them.
    Limb* top(size_t v) const noexcept { return limbs + (w - v); }

    Limb* limbs;
    size_t w;
};

void divideSum(const Sum& sum, size_t v, Limb divisor) noexcept
{
    Limb* p = sum.top(v);
    const bool negative = sum.negative();
    if (negative)
        limbsNegate(p, v + 1);
    limbsDivLimb(p, v + 1, divisor, p);
    if (negative)
        limbsNegate(p, v + 1);
}

void multiplySum(const Sum& sum, size_t v, const Powers& powers, Limb* area)
{
    Limb* p = sum.top(v);
    const Limb* power = powers.row(powers.count) + (powers.w - v);
    const bool negative = sum.negative();
    if (negative)
        limbsNegate(p, v + 1);
    const Limb above = sum.above();
    fixedMul(p, power, v, p, area);
    sum.above() = rowAddMul(p, power, v, above);
    if (negative)
        limbsNegate(p, v + 1);
}

void addTerm(const Sum& sum, size_t v, const Limb* power, Limb factor, bool subtract) noexcept
{
    Limb* p = sum.top(v);
    if (power == nullptr) // t^0
        sum.above() += subtract ? 0 - factor : factor;
    else if (subtract)
        sum.above() -= rowSubMul(p, power + (sum.w - v), v, factor);
    else
        sum.above() += rowAddMul(p, power + (sum.w - v), v, factor);
}

/// The series over terms terms, t below 2^-bits. Horner's scheme in t^m over blocks of m terms,
/// whose factorials are kept as integer factors as long as they fit a limb (Smith, Efficient
/// multiple-precision evaluation of elementary functions, 1989). The higher a block, the fewer
/// limbs of it count.
void sumSeries(Series series, const Powers& powers, size_t terms, size_t bits, const Sum& sum,
               Limb* area)
{
    constexpr Limb maxFactor = Limb(1) << 61; // the sum stays in its limb above
    const size_t w = powers.w;
    const size_t m = powers.count;
    limbsZero(sum.limbs, w + 1);
    // A block is multiplied by t^(its first k) in the end: what that shifts out does not count.
    const auto limbsAt = [&](size_t first) { return w - std::min(w - 1, bits * first / 64); };
    size_t v = limbsAt((terms - 1) / m * m);
    Limb factor = 1;
    for (size_t k = terms; k-- > 0;) {
        const size_t place = k % m;
        addTerm(sum, v, place == 0 ? nullptr : powers.row(place), factor,
                series != Series::Exp && k % 2 != 0);
        if (k == 0)
            break;
        const Limb step = factorOf(series, k);
        if (factor > maxFactor / step) {
            divideSum(sum, v, factor);
            factor = 1;
        }
        factor *= step;
        if (place == 0) {
            xstd::XStop::poll();
            v = limbsAt(k - m);
            multiplySum(sum, v, powers, area);
        }
    }
    divideSum(sum, w, factor);
}

/// r = half of a sum that is at most 2 less a unit.
void halve(const Sum& sum, Limb* r) noexcept
{
    limbsShrSmall(sum.limbs, sum.w, 1, r);
    r[sum.w - 1] |= sum.above() << 63;
}

} // namespace

void seriesExp(const Limb* x, size_t w, Limb* r)
{
    const size_t bits = limbsLeadingZeros(x, w);
    const size_t terms = termsOf(Series::Exp, bits, w);
    const size_t m = powersFor(terms);
    LimbScratch scratch(m * w + (w + 1) + fixedMulArea(w));
    const Powers powers{scratch, m, w};
    const Sum sum{scratch + m * w, w};
    Limb* area = sum.limbs + (w + 1);
    limbsCopy(powers.limbs, x, w);
    fillPowers(powers, area);
    sumSeries(Series::Exp, powers, terms, bits, sum, area);
    halve(sum, r);
}

void seriesSinCos(const Limb* x, size_t w, Limb* sine, Limb* cosine)
{
    const size_t bits = 2 * limbsLeadingZeros(x, w);
    const size_t terms = termsOf(Series::Cos, bits, w);
    const size_t m = powersFor(terms);
    LimbScratch scratch(m * w + 2 * (w + 1) + fixedMulArea(w));
    const Powers powers{scratch, m, w};
    const Sum sum{scratch + m * w, w};
    Limb* area = sum.limbs + (w + 1);
    fixedMul(x, x, w, powers.limbs, area);
    fillPowers(powers, area);
    sumSeries(Series::Sin, powers, terms, bits, sum, area);
    Limb* halfQuotient = area + fixedMulArea(w);
    halve(sum, halfQuotient);
    sumSeries(Series::Cos, powers, terms, bits, sum, area);
    fixedMul(halfQuotient, x, w, sine, area);
    halve(sum, cosine);
}

} // namespace huge
