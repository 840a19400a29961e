#include "numbers/fixedFunctions.h"

#include "common/XStop.h"
#include "numbers/LimbPool.h"
#include "numbers/elementaryTables.h"
#include "numbers/fixedConstants.h"
#include "numbers/fixedPoint.h"
#include "numbers/fixedSeries.h"
#include "numbers/limbRows.h"
#include "numbers/limbsQuotient.h"

#include <algorithm>
#include <cmath>

namespace huge {

namespace {

/// Without tables an argument is halved so often before its series is summed; each halving costs a
/// product or two, and saves terms.
size_t halvingsFor(size_t w)
{
    return 8 + size_t(std::sqrt(64.0 * double(w)) / 9);
}

/// Limbs below the last one for what doubling so often does to errors.
size_t guardFor(size_t halvings)
{
    return halvings / 64 + 1;
}

/// The first 16 bits of a fraction as indices into the tables; the rest stays.
struct TableSteps {
    TableSteps(const Limb* x, size_t w, Limb* rest)
        : coarse(x[w - 1] >> 56), fine((x[w - 1] >> 48) % tableSteps)
    {
        limbsCopy(rest, x, w);
        rest[w - 1] &= ~Limb(0) >> 16;
    }

    size_t coarse;
    size_t fine;
};

void expByTable(const Limb* x, size_t w, Limb* r)
{
    const XExpTable& table = XExpTable::forLimbs(w);
    LimbScratch scratch(w + fixedMulArea(w));
    Limb* rest = scratch;
    Limb* area = scratch + w;
    const TableSteps steps(x, w, rest);
    seriesExp(rest, w, rest);
    fixedMul(rest, table.fine(steps.fine, w), w, rest, area);
    fixedMul(rest, table.coarse(steps.coarse, w), w, r, area);
}

void expByHalving(const Limb* x, size_t w, Limb* r)
{
    const size_t halvings = halvingsFor(w);
    const size_t guard = guardFor(halvings);
    const size_t v = w + guard;
    LimbScratch scratch(v + fixedMulArea(v));
    Limb* power = scratch;
    Limb* area = scratch + v;
    limbsZero(power, guard);
    limbsCopy(power + guard, x, w);
    limbsShr(power, v, halvings);
    seriesExp(power, v, power);
    limbsShrSmall(power, v, 1, power); // from here on quarters, since e is above 2
    for (size_t i = 0; i < halvings; ++i) {
        xstd::XStop::poll();
        fixedMul(power, power, v, power, area);
        limbsShlSmall(power, v, 2, power);
    }
    limbsShrSmall(power + guard, w, 2, r);
}

void sinCosByTable(const Limb* x, size_t w, Limb* sine, Limb* cosine)
{
    const XTrigTable& table = XTrigTable::forLimbs(w);
    LimbScratch scratch(5 * w + fixedMulArea(w));
    const HalfAngle angle{scratch, scratch + w};
    Limb* rest = scratch + 2 * w;
    Limb* area = scratch + 3 * w;
    const TableSteps steps(x, w, rest);
    seriesSinCos(rest, w, angle.sine, angle.cosine);
    addAngle(angle, table.fineSin(steps.fine, w), table.fineCos(steps.fine, w), w, area);
    addAngle(angle, table.coarseSin(steps.coarse, w), table.coarseCos(steps.coarse, w), w, area);
    limbsCopy(sine, angle.sine, w);
    limbsCopy(cosine, angle.cosine, w);
}

/// Doubles the angle: sin 2a = 2 sin a cos a, cos 2a = 1 - 2 sin^2 a, in halves.
void doubleAngle(const HalfAngle& angle, size_t v, Limb* area)
{
    fixedMul(angle.cosine, angle.sine, v, angle.cosine, area);
    fixedMul(angle.sine, angle.sine, v, angle.sine, area);
    limbsShlSmall(angle.cosine, v, 2, angle.cosine); // half of the new sine
    limbsShlSmall(angle.sine, v, 2, angle.sine);
    limbsNegate(angle.sine, v);
    angle.sine[v - 1] += Limb(1) << 63;
    std::swap_ranges(angle.sine, angle.sine + v, angle.cosine);
}

void sinCosByHalving(const Limb* x, size_t w, Limb* sine, Limb* cosine)
{
    const size_t halvings = halvingsFor(w);
    const size_t guard = guardFor(2 * halvings);
    const size_t v = w + guard;
    LimbScratch scratch(3 * v + fixedMulArea(v));
    const HalfAngle angle{scratch, scratch + v};
    Limb* part = scratch + 2 * v;
    Limb* area = scratch + 3 * v;
    limbsZero(part, guard);
    limbsCopy(part + guard, x, w);
    limbsShr(part, v, halvings);
    seriesSinCos(part, v, angle.sine, angle.cosine);
    for (size_t i = 0; i < halvings; ++i) {
        xstd::XStop::poll();
        doubleAngle(angle, v, area);
    }
    limbsShrSmall(angle.sine + guard, w, 2, sine);
    limbsShrSmall(angle.cosine + guard, w, 2, cosine);
}

/// The value of a fraction from its top limb.
double topOf(const Limb* x, size_t w)
{
    return std::ldexp(double(x[w - 1]), -64);
}

void setFromDouble(Limb* r, size_t w, double value)
{
    limbsZero(r, w);
    r[w - 1] = Limb(std::ldexp(value, 64));
}

/// The length of the approximation that one round makes four times as precise.
size_t seedLength(size_t w)
{
    return w / 4 + 1;
}

/// Fractions up to this length start from a double: 52 bits of it, four times, fill them.
constexpr size_t doubleSeedLimbs = 3;

/// Makes |x| of a small number whose sign stands in the limb above the fraction; gives the sign.
bool takeSign(Limb* x, size_t w) noexcept
{
    const bool negative = x[w] >> 63 != 0;
    if (negative)
        limbsNegate(x, w + 1);
    return negative;
}

/// |ln(1 + d)| or |ln(1 - d)| for a small d, into d: d -+ d^2 / 2 + d^3 / 3.
void lnOfSmall(Limb* d, bool negative, size_t w, Limb* area)
{
    Limb* square = area;
    Limb* cube = area + w;
    Limb* mulArea = area + 2 * w;
    fixedMul(d, d, w, square, mulArea);
    fixedMul(square, d, w, cube, mulArea);
    limbsShrSmall(square, w, 1, square);
    limbsDivLimb(cube, w, 3, cube);
    limbsAddTo(d, w, cube, w);
    if (negative)
        limbsAddTo(d, w, square, w);
    else
        limbsSubFrom(d, w, square, w);
}

/// Improves seed, about |ln(1 +- x)|: with E = e^-seed, or e^seed for negative, (1 +- x) * E is
/// 1 + d with a small d, and ln(1 + d) is what the seed lacks.
void improveLn(const Limb* x, bool negative, size_t w, Limb* seed)
{
    LimbScratch scratch(w + (w + 1) + 2 * w + fixedMulArea(w));
    Limb* power = scratch;
    Limb* d = scratch + w;
    Limb* area = d + (w + 1);
    // e^-seed is e^(ln 2 - seed) / 2: the exponential takes no negative argument.
    if (negative)
        limbsCopy(power, seed, w);
    else
        limbsSub(fixedLn2(w), w, seed, w, power);
    fixedExp(power, w, power);
    fixedMul(x, power, w, d, area);
    if (negative)
        rowSub(power, d, w, 0, d);
    else
        rowAdd(power, d, w, 0, d);
    limbsShlGrow(d, w, negative ? 4 : 3, d);
    d[w] -= 1;
    const bool lacks = !takeSign(d, w);
    lnOfSmall(d, !lacks, w, area);
    // |ln(1 - x)| is what is left of the seed when ln(1 + d) is positive.
    if (lacks != negative)
        limbsAddTo(seed, w, d, w);
    else
        limbsSubFrom(seed, w, d, w);
}

/// Improves seed, about the inverse tangent of x: the tangent of what it lacks is
/// (x cos seed - sin seed) / (cos seed + x sin seed).
void improveAtan(const Limb* x, size_t w, Limb* seed)
{
    LimbScratch scratch(2 * w + (w + 1) + 2 * w + fixedMulArea(w));
    Limb* sine = scratch;
    Limb* cosine = scratch + w;
    Limb* d = scratch + 2 * w;
    Limb* numerator = d + (w + 1); // 2 * w limbs
    Limb* area = numerator + 2 * w;
    fixedSinCos(seed, w, sine, cosine);
    fixedMul(x, cosine, w, d, area);
    const bool negative = limbsSubFrom(d, w, sine, w) != 0;
    fixedMul(x, sine, w, sine, area);
    limbsAddTo(cosine, w, sine, w);
    // The divisor is at least 1/8 less some units; its top bit is set by a shift that the dividend
    // shares.
    const unsigned shift = unsigned(__builtin_clzll(cosine[w - 1]));
    limbsShlSmall(cosine, w, shift, cosine);
    limbsZero(numerator, w);
    limbsShlSmall(d, w, shift, numerator + w);
    limbsQuotient(numerator, 2 * w, cosine, w, d);
    // atan d = d - d^3 / 3
    fixedMul(d, d, w, numerator, area);
    fixedMul(numerator, d, w, numerator, area);
    limbsDivLimb(numerator, w, 3, numerator);
    limbsSubFrom(d, w, numerator, w);
    if (negative)
        limbsSubFrom(seed, w, d, w);
    else
        limbsAddTo(seed, w, d, w);
}

} // namespace

void addAngle(const HalfAngle& angle, const Limb* sine, const Limb* cosine, size_t w, Limb* area)
{
    Limb* crossed = area;
    Limb* sines = area + w;
    Limb* mulArea = area + 2 * w;
    fixedMul(angle.cosine, sine, w, crossed, mulArea);
    fixedMul(angle.sine, sine, w, sines, mulArea);
    fixedMul(angle.sine, cosine, w, angle.sine, mulArea);
    fixedMul(angle.cosine, cosine, w, angle.cosine, mulArea);
    rowAdd(angle.sine, crossed, w, 0, angle.sine);
    rowSub(angle.cosine, sines, w, 0, angle.cosine);
}

void fixedExp(const Limb* x, size_t w, Limb* r)
{
    if (w <= tableLimbs)
        expByTable(x, w, r);
    else
        expByHalving(x, w, r);
}

void fixedSinCos(const Limb* x, size_t w, Limb* sine, Limb* cosine)
{
    if (w <= tableLimbs)
        sinCosByTable(x, w, sine, cosine);
    else
        sinCosByHalving(x, w, sine, cosine);
}

void fixedLn1p(const Limb* x, bool negative, size_t w, Limb* r)
{
    LimbScratch seed(w);
    if (w <= doubleSeedLimbs) {
        setFromDouble(seed, w, std::fabs(std::log1p(negative ? -topOf(x, w) : topOf(x, w))));
    } else {
        const size_t v = seedLength(w);
        limbsZero(seed, w - v);
        fixedLn1p(x + (w - v), negative, v, seed + (w - v));
    }
    improveLn(x, negative, w, seed);
    limbsCopy(r, seed, w);
}

void fixedAtan(const Limb* x, size_t w, Limb* r)
{
    LimbScratch seed(w);
    if (w <= doubleSeedLimbs) {
        setFromDouble(seed, w, std::atan(topOf(x, w)));
    } else {
        const size_t v = seedLength(w);
        limbsZero(seed, w - v);
        fixedAtan(x + (w - v), v, seed + (w - v));
    }
    improveAtan(x, w, seed);
    limbsCopy(r, seed, w);
}

} // namespace huge
